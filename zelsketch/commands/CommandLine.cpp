#include "CommandLine.h"

#include <algorithm>
#include <functional>
#include <new>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "BuildCommand.h"
#include "CheckCommand.h"
#include "ConvertCommand.h"
#include "ListCommand.h"
#include "DiffCommand.h"
#include "EditCommand.h"
#include "GetCommand.h"
#include "Input.h"
#include "zel/text/Failure.h"
#include "Manual.h"
#include "ShowCommand.h"
#include "zel/text/Versions.h"

namespace zel {
namespace {

// The command line as people type it: fills a command's fields and says which command was asked for.
class Commands : public CLI::App {
public:
    Commands()
        : App("shows, checks, edits and converts area definition files\n"
              "Reads the area definition files of a floor plan sketch, versions " +
                  LoadedVersions() + ", whole or damaged. Text is taken as Windows-1252.",
              "zelsketch") {
        // Commands take these over when they are added.
        formatter_fn(
            [](const App* command, const std::string&, CLI::AppFormatMode) { return HelpOf(*command); });
        allow_windows_style_options(false);
        set_version_flag("--version", "zelsketch " ZEL_VERSION, "Print the version and exit");
        require_subcommand(1);
        AddShow();
        AddList();
        AddGet();
        AddSet();
        AddAdd();
        AddRemove();
        AddMove();
        AddDiff();
        AddBuild();
        AddCheck();
        AddConvert();
        Add("completion", "Prints what lets bash complete commands and options: source it in ~/.bashrc.",
            [this](const Console& console) {
                PrintCompletion(*this, console.out);
                return kSound;
            });
        Add("manual", "Prints the manual page.", [this](const Console& console) {
            PrintManual(*this, console.out);
            return kSound;
        })->group("");
    }

    ExitStatus Run(Console console) const {
        if (colour_ != "auto") console.hasColour = colour_ == "always";
        const auto run =
            std::find_if(runs_.begin(), runs_.end(), [](const auto& r) { return r.first->parsed(); });
        if (out_.empty() || out_ == "-") return run->second(console);
        const Output output(console, out_, Overwrite::kReplace);
        if (LooksLikeDefinitionFile(out_))
            throw Failure(kUnusable, "will not replace " + out_ + ": it is a definition file");
        std::ostringstream text;
        text.exceptions(std::ios_base::badbit);
        const ExitStatus status = run->second({console.in, text, console.error, colour_ == "always",
                                               console.errorIsTerminal, false, console.progress});
        output.Write(text.str());
        return status;
    }

private:
    using RunFunction = std::function<ExitStatus(const Console&)>;

    App* Add(const std::string& name, const std::string& description, RunFunction run) {
        runs_.emplace_back(add_subcommand(name, description), std::move(run));
        return runs_.back().first;
    }

    static void AddFiles(App* app, Inputs& inputs) {
        app->add_flag("-r,--recursive", inputs.recursive,
                      "Goes through folders, for all definition files in them");
        app->add_option("FILE", inputs.paths, "Definition files, - for the standard input; folders")
            ->required();
    }
    void AddColour(App* app) {
        app->add_option("--color", colour_, "auto (on a terminal, without NO_COLOR), always or never")
            ->type_name("WHEN")
            ->check(CLI::IsMember({"auto", "always", "never"}));
    }
    void AddOutput(App* app) {
        app->add_option("-o,--output", out_,
                        "Where to print, - for the standard output; replaced once all is there")
            ->type_name("OUT");
    }

    void AddShow() {
        App* app = Add("show",
                       "Prints what is in a file: a page to read, unless an option says otherwise. "
                       "Damaged files are shown as far as they go.",
                       [this](const Console& console) { return show_.Run(console); });
        auto* json = app->add_flag("--json", show_.json, "As JSON that tells every byte of the file");
        auto* hex =
            app->add_flag("--hex", show_.hex, "Every byte with its offset, its field and the field's value")
                ->excludes(json);
        auto* drawing = app->add_option("--drawing", show_.drawing,
                                        "FILE holds the drawing of a sketch of this version, 0 to 26")
                            ->type_name("VERSION")
                            ->check(CLI::Range(0, 26));
        app->add_option("--at", show_.at, "Where in FILE the drawing begins, in bytes; 0 if not given")
            ->type_name("OFFSET")
            ->needs(drawing);
        app->add_flag("--svg", show_.svg,
                      "As a picture of its anchors, points and groups to scale, with kinds as labels and a "
                      "colour for each style; Y grows downwards")
            ->needs(drawing)
            ->excludes(json)
            ->excludes(hex);
        app->add_flag("--salvage", show_.salvage,
                      "Of a damaged file also what readers do not find; says what that is and ends with 1")
            ->excludes(drawing);
        AddColour(app);
        AddOutput(app);
        AddFiles(app, show_.files);
    }

    void AddList() {
        App* app = Add("list",
                       "Lists the definitions of all files in one table, one a line, members indented. "
                       "Damaged files are listed as far as they go, and end with 1.",
                       [this](const Console& console) { return list_.Run(console); });
        auto* csv = app->add_flag("--csv", list_.csv,
                                  "For spreadsheets: all fields, with commas between them, as UTF-8");
        app->add_flag("--tsv", list_.tsv, "The same with tabs")->excludes(csv);
        AddColour(app);
        AddOutput(app);
        AddFiles(app, list_.files);
    }

    void AddGet() {
        App* app = Add("get",
                       "Prints the values at some paths, as 'check' prints them: 'Header.CreatedBy', "
                       "'Definitions[2].Members[0].AreaName', by code 'Definitions[GAR].Multiplier', of all "
                       "'Definitions[*].AreaCode'. A definition's path gives all its fields.",
                       [this](const Console& console) { return get_.Run(console); });
        app->add_flag("--all", get_.all, kAll);
        app->add_option("FILE", get_.file, kFile)->required();
        app->add_option("PATH", get_.paths, "Which values")->required();
        AddOutput(app);
    }

    void AddSet() {
        App* app =
            AddEdit("set",
                    "Changes single values; everything else in the file stays as it is. What does not fit "
                    "is refused, with what would.",
                    &EditCommand::Set);
        app->add_flag("--all", edit_.all, kAll);
        app->add_option(
               "PATH=VALUE", edit_.arguments,
               "Which values, and what they become. A date may be given as 2004-02-29, a time as 23:59:59")
            ->required();
    }

    void AddAdd() {
        App* app = AddEdit("add", "Adds a definition.", &EditCommand::Add);
        app->add_option("PATH", edit_.place,
                        "The list whose end it goes to, as Definitions or Definitions[GAR].Members; or the "
                        "definition in front of which it goes")
            ->required();
        app->add_option("FIELD=VALUE", edit_.arguments, "What is in it; other fields are empty or zero");
    }

    void AddRemove() {
        App* app = AddEdit("remove", "Removes definitions, with their members.", &EditCommand::Remove);
        app->add_flag("--all", edit_.all, kAll);
        app->add_option("PATH", edit_.arguments, "Which definitions")->required();
    }

    void AddMove() {
        App* app = AddEdit("move", "Moves a definition, with its members.", &EditCommand::Move);
        app->add_option("PATH", edit_.place, "Which definition")->required();
        app->add_option("TO", edit_.arguments, "The place that it gets, or the list whose end it goes to")
            ->required()
            ->expected(1);
    }

    App* AddEdit(const std::string& name, const std::string& description,
                 ExitStatus (EditCommand::*run)(const Console&) const) {
        App* app = Add(name, description + " Changes FILE in place and keeps the old one as FILE.bak.",
                       [this, run](const Console& console) { return (edit_.*run)(console); });
        app->add_option("-o,--output", edit_.out, "Writes OUT instead of changing FILE")->type_name("OUT");
        app->add_flag("--no-backup", edit_.dropsBackup, "Keeps no FILE.bak");
        app->add_flag("--force", edit_.force, "Changes FILE even where it is read-only, replaces OUT");
        app->add_option("FILE", edit_.file, kFile)->required();
        return app;
    }

    void AddDiff() {
        App* app =
            Add("diff",
                "Says what has changed from one file to another: values, and definitions that were "
                "added, removed or moved. Definitions belong together by their code and order. Ends with 0 "
                "where nothing has changed, with 1 where something has, with 2 for trouble.",
                [this](const Console& console) { return diff_.Run(console); });
        app->add_flag("--json", diff_.json, "As a JSON array, one object a change");
        app->add_flag("--git", diff_.git,
                      "As an external diff of git, which gives other arguments; ends with 0");
        AddOutput(app);
        app->add_option("FILE", diff_.files, "The old file and the new one, - for the standard input")
            ->required();
    }

    void AddBuild() {
        App* app = Add("build",
                       "Makes a file of the JSON that 'show --json' prints; replaces OUT once "
                       "all is written and read back. Fields that the JSON leaves out are as in a new file.",
                       [this](const Console& console) { return build_.Run(console); });
        app->add_flag("--force", build_.force, "Replaces OUT even where it is read-only");
        app->add_option("JSON", build_.json, "The JSON text, - for the standard input")->required();
        app->add_option("OUT,-o,--output", build_.out,
                        "The definition file to write, also behind -o; - for the standard output")
            ->required();
    }

    void AddCheck() {
        App* app =
            Add("check",
                "Says what is wrong with each file: offset, field and fault, a line each. What readers cope "
                "with, as old characters behind a text, is a note.",
                [this](const Console& console) { return check_.Run(console); });
        AddOutput(app);
        AddFiles(app, check_.files);
    }

    void AddConvert() {
        App* app =
            Add("convert",
                "Writes a file's content as another version and lists the values "
                "that this version cannot hold. Refuses what 'check' calls damaged. Never overwrites OUT.",
                [this](const Console& console) { return convert_.Run(console); });
        app->add_option("--to-version", convert_.version, "The version of OUT, " + SavedVersions())
            ->required()
            ->type_name("N")
            ->check(CLI::Range(SketchFile::kOldestSavedVersion, SketchFile::kNewestVersion));
        app->add_flag("--salvage", convert_.salvage,
                      "Takes what can be read of a damaged file, says what is left behind and ends with 1");
        app->add_option(
               "-o,--output", convert_.out,
               "The definition file to write, or the folder for many; without it the last FILE is OUT")
            ->type_name("OUT");
        AddFiles(app, convert_.files);
    }

    static constexpr char kFile[] = "The definition file, - for the standard input";
    static constexpr char kAll[] = "All definitions that a code stands for, where it stands more than once";

    std::vector<std::pair<App*, RunFunction>> runs_;
    std::string out_;
    std::string colour_ = "auto";
    ShowCommand show_;
    ListCommand list_;
    GetCommand get_;
    EditCommand edit_;
    DiffCommand diff_;
    BuildCommand build_;
    CheckCommand check_;
    ConvertCommand convert_;
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

int RunCommandLine(std::vector<std::string> arguments, const Console& given) {
    std::optional<Progress> progress;
    Console console = given;
    if (!console.progress) console.progress = &progress.emplace(given.error, given.errorIsTerminal);
    std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
    try {
        Commands commands;
        ExitStatus status = kSound;
        try {
            commands.parse(std::move(arguments));
            status = commands.Run(console);
        } catch (const CLI::Success& success) {
            commands.exit(success, console.out, console.error);
        } catch (const CLI::ParseError& error) {
            return Complain(console, Fault(commands, error) + "; see zelsketch --help", kUnusable);
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
