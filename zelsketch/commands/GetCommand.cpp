#include "GetCommand.h"

#include "ForFile.h"
#include "Input.h"
#include "zel/edit/Editor.h"

namespace zel {

ExitStatus GetCommand::Run(const Console& console) const {
    const std::string bytes = ReadInput(console, file);
    for (const std::string& path : paths)
        for (const std::string& line : ForFile(file, [&] { return Editor::Get(bytes, path, all); }))
            console.out << line << '\n';
    return kSound;
}

}  // namespace zel
