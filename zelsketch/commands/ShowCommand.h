#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Console.h"
#include "Inputs.h"
#include "zel/survey/Field.h"
#include "zel/text/Failure.h"

namespace zel {

// zelsketch show: what is in a definition file or a drawing, as a page, as JSON or byte by byte.
struct ShowCommand {
    Inputs files;
    bool json = false;
    bool hex = false;
    bool svg = false;
    bool salvage = false;                 // a damaged file, with what readers do not find
    std::optional<std::int32_t> drawing;  // the version of the sketch whose drawing the file holds
    std::size_t at = 0;                   // where it begins

    ExitStatus Run(const Console& console) const;

private:
    ExitStatus Show(const Console& console, const std::string& file) const;
    void Survey(std::string_view bytes, FieldVisitor& visitor) const;
};

}  // namespace zel
