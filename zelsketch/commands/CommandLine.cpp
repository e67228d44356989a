#include "CommandLine.h"

#include <algorithm>
#include <new>
#include <utility>

#include <CLI/CLI.hpp>

#include "BuildCommand.h"
#include "CheckCommand.h"
#include "ConvertCommand.h"
#include "ListCommand.h"
#include "zel/text/Failure.h"
#include "Manual.h"
#include "ShowCommand.h"
#include "zel/text/Versions.h"

namespace zel {
namespace {

// The command line as people type it: fills a command's fields and says which command was asked for.
struct Commands {
    struct Program : CLI::App {
        // Its commands take it over when they are made.
        Program(std::string description, std::string name) : App(std::move(description), std::move(name)) {
            formatter_fn([](const App* app, const std::string&, CLI::AppFormatMode) { return HelpOf(*app); });
        }
    };
    Program app{
        "shows, checks, edits and converts area definition files\n"
        "Reads the area definition files of a floor plan sketch, versions " +
            LoadedVersions() + ", whole or damaged. Text is taken as Windows-1252.",
        "zelsketch"};
    ShowCommand show;
    ListCommand list;
    BuildCommand build;
    CheckCommand check;
    ConvertCommand convert;
    CLI::App* showApp =
        app.add_subcommand("show",
                           "Prints what is in a file: a page to read, unless an option says otherwise. "
                           "Damaged files are shown as far as they go.");
    CLI::App* listApp =
        app.add_subcommand("list",
                           "Lists the definitions of all files in one table, one a line, members indented. "
                           "Damaged files are listed as far as they go, and end with 1.");
    CLI::App* buildApp =
        app.add_subcommand("build",
                           "Makes a file of the JSON that 'show --json' prints; replaces OUT once "
                           "all is written and read back. Fields that the JSON leaves out are as in a "
                           "new file.");
    CLI::App* checkApp = app.add_subcommand(
        "check",
        "Says what is wrong with each file: offset, field and fault, a line each. What readers cope "
        "with, as old characters behind a text, is a note.");
    CLI::App* convertApp =
        app.add_subcommand("convert",
                           "Writes a file's content as another version and lists the values "
                           "that this version cannot hold. Refuses what 'check' calls damaged. Never "
                           "overwrites OUT.");
    CLI::App* manualApp = app.add_subcommand("manual", "Prints the manual page.")->group("");

    Commands() {
        app.set_version_flag("--version", "zelsketch " ZEL_VERSION, "Print the version and exit");
        app.require_subcommand(1);
        auto* json = showApp->add_flag("--json", show.json, "As JSON that tells every byte of the file");
        auto* hex =
            showApp
                ->add_flag("--hex", show.hex, "Every byte with its offset, its field and the field's value")
                ->excludes(json);
        auto* drawing = showApp
                            ->add_option("--drawing", show.drawing,
                                         "FILE holds the drawing of a sketch of this version, 0 to 26")
                            ->type_name("VERSION")
                            ->check(CLI::Range(0, 26));
        showApp->add_option("--at", show.at, "Where in FILE the drawing begins, in bytes; 0 if not given")
            ->type_name("OFFSET")
            ->needs(drawing);
        showApp
            ->add_flag("--svg", show.svg,
                       "As a picture of its anchors, points and groups to scale, with kinds as labels and a "
                       "colour for each style; Y grows downwards")
            ->needs(drawing)
            ->excludes(json)
            ->excludes(hex);
        showApp->add_option("FILE", show.file, "The file")->required();
        auto* csv = listApp->add_flag("--csv", list.csv,
                                      "For spreadsheets: all fields, with commas between them, as UTF-8");
        listApp->add_flag("--tsv", list.tsv, "The same with tabs")->excludes(csv);
        listApp->add_option("FILE", list.files, "Definition files")->required();
        buildApp->add_flag("--force", build.force, "Replaces OUT even where it is read-only");
        buildApp->add_option("JSON", build.json, "The JSON text")->required();
        buildApp->add_option("OUT", build.out, "The definition file to write")->required();
        checkApp->add_option("FILE", check.files, "Definition files")->required();
        convertApp->add_option("--to-version", convert.version, "The version of OUT, " + SavedVersions())
            ->required()
            ->type_name("N")
            ->check(CLI::Range(SketchFile::kOldestSavedVersion, SketchFile::kNewestVersion));
        convertApp->add_flag(
            "--salvage", convert.salvage,
            "Takes what can be read of a damaged file, says what is left behind and ends with 1");
        convertApp->add_option("FILE", convert.file, "The definition file")->required();
        convertApp->add_option("OUT", convert.out, "The definition file to write")->required();
    }

    ExitStatus Run(const Console& console) const {
        if (showApp->parsed()) return show.Run(console);
        if (listApp->parsed()) return list.Run(console);
        if (buildApp->parsed()) return build.Run(console);
        if (checkApp->parsed()) return check.Run(console);
        if (convertApp->parsed()) return convert.Run(console);
        PrintManual(app, console.out);
        return kSound;
    }
};

// What is wrong with a command line, with the word that makes it so.
std::string Fault(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> unknown = app.remaining();
    if (dynamic_cast<const CLI::RequiredError*>(&error) && app.get_subcommands().empty() && !unknown.empty())
        return (unknown[0][0] == '-' ? "no such option: " : "no such command: ") + unknown[0];
    return error.what();
}

int Complain(const Console& console, const std::string& message, ExitStatus status) {
    console.Complain(message);
    return status;
}

}  // namespace

int RunCommandLine(std::vector<std::string> arguments, const Console& console) {
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    try {
        Commands commands;
        ExitStatus status = kSound;
        try {
            commands.app.parse(std::move(arguments));
            status = commands.Run(console);
        } catch (const CLI::Success& success) {
            commands.app.exit(success, console.out, console.error);
        } catch (const CLI::ParseError& error) {
            return Complain(console, Fault(commands.app, error) + "; see zelsketch --help", kUnusable);
        }
        console.ExpectPrinted();
        return status;
    } catch (const Failure& failure) {
        return Complain(console, failure.what(), failure.status());
    } catch (const std::bad_alloc&) {
        return Complain(console, "out of memory", kUnusable);
    } catch (const std::exception& error) {
        return Complain(console, error.what(), kUnusable);
    }
}

}  // namespace zel
