#include "Manual.h"

#include <sstream>
#include <vector>

namespace zel {
namespace {

constexpr char kDate[] = "2026-11-21";

struct Entry {
    const char* term;
    const char* meaning;
};

constexpr Entry kExamples[] = {
    {"zelsketch show old.zel", "what is in a file, as a page to read"},
    {"zelsketch show --hex old.zel | less", "every byte with its offset and field"},
    {"zelsketch list --csv archive/*.zel >all.csv", "all definitions of many files, for a spreadsheet"},
    {"zelsketch show --drawing 24 sketch.bin", "the areas, styles and entities of a drawing"},
    {"zelsketch get old.zel 'Definitions[*].AreaCode'", "one kind of value"},
    {"zelsketch set old.zel 'Definitions[GAR].Multiplier=0.5'", "one value changed, old.zel.bak kept"},
    {"zelsketch show --json old.zel >old.json", "everything, to edit, compare or keep under version control"},
    {"zelsketch build old.json new.zel", "the way back: without an edit, the same bytes"},
    {"zelsketch check archive/*.zel", "which files are damaged, and where"},
    {"zelsketch convert --to-version 3 new.zel old.zel", "a file for an older program, and what it lacks"},
};

constexpr Entry kStatuses[] = {
    {"0", "done; for check: every file is sound"},
    {"1", "the file or JSON was read, and something is wrong with it"},
    {"2", "a file cannot be read or written, or the command line is wrong"},
};

constexpr Entry kJson[] = {
    {"$schema", "definition-file.schema.json, the schema that all of it follows"},
    {"text",
     "a string; characters are those of Windows-1252, whose five open bytes stand for the control characters "
     "of their number. What it does not tell stands behind it: under AreaNameCount a count that is not the "
     "text's length, under AreaNameBehind the bytes behind the text up to the field's end in hexadecimal, "
     "under AreaCodeTag a tag that is not 6"},
    {"number with a fraction",
     "a number; null for NaN and infinity, and \"0x\" and 16 digits under WallWidthBits"},
    {"date", "a day number; day 0 is 1 January 1600"},
    {"time", "seconds since midnight"},
    {"DefinitionsOpening, MembersOpening", "a list's opening byte, where that is not 1"},
    {"LeftOver", "the bytes behind the end in hexadecimal"},
    {"CutShort", "how many bytes a damaged file lacks at its end"},
};

// Text of a manual page, in lines of at most 80 characters. A hyphen stands for itself, a backslash or a dot
// at a line's begin are no commands.
std::string Roff(const std::string& text) {
    constexpr std::size_t kWidth = 80;
    std::istringstream words(text);
    std::string roff, line;
    for (std::string word; words >> word;) {
        std::string escaped = word[0] == '.' || word[0] == '\'' ? "\\&" : "";
        for (const char c : word) escaped += c == '-' ? "\\-" : c == '\\' ? "\\e" : std::string(1, c);
        if (!line.empty() && line.size() + 1 + escaped.size() > kWidth) {
            roff += line + '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + escaped;
    }
    return roff + line;
}

void PrintEntry(std::ostream& out, const std::string& term, const std::string& meaning) {
    out << ".TP\n.B " << Roff(term) << '\n' << Roff(meaning) << '\n';
}

std::string Term(const CLI::Option& option) {
    const std::string name = option.get_name(option.get_positional(), !option.get_positional());
    const std::string type = option.get_type_name();  // "N:INT in [1 - 5]"
    return option.get_positional() || type.empty() ? name : name + " " + type.substr(0, type.find(':'));
}

void PrintOptions(const CLI::App& app, std::ostream& out) {
    for (const CLI::Option* option : app.get_options())
        if (option != app.get_help_ptr() || !app.get_parent())
            PrintEntry(out, Term(*option), option->get_description());
}

template <std::size_t n>
void PrintEntries(std::ostream& out, const char* heading, const Entry (&entries)[n]) {
    out << ".SH " << heading << '\n';
    for (const Entry& entry : entries) PrintEntry(out, entry.term, entry.meaning);
}

std::string Synopsis(const CLI::App& command) {
    std::string text = command.get_name();
    for (const CLI::Option* option : command.get_options()) {
        if (option == command.get_help_ptr()) continue;
        const std::string term = Term(*option);
        text += option->get_required() ? " " + term : " [" + term + "]";
        if (option->get_expected_max() > 1) text += "...";
    }
    return text;
}

constexpr std::size_t kColumns = 80;

// Appends words in lines that go from `indent` to the last column; the text may already stand behind it.
void Wrap(std::string& text, std::size_t indent, const std::string& words) {
    std::istringstream stream(words);
    std::size_t column = text.size() - (text.rfind('\n') + 1);
    for (std::string word; stream >> word;) {
        if (column > indent && column + 1 + word.size() > kColumns) {
            text += '\n';
            column = 0;
        }
        const std::size_t blanks = column > indent ? 1 : indent - column;
        text.append(blanks, ' ');
        text += word;
        column += blanks + word.size();
    }
    text += '\n';
}

void ListEntry(std::string& text, const std::string& term, const std::string& meaning) {
    constexpr std::size_t kIndent = 20;
    text += "  " + term + (term.size() + 4 > kIndent ? "\n" : "");
    Wrap(text, kIndent, meaning);
}

template <std::size_t n>
void ListEntries(std::string& text, const char* heading, const Entry (&entries)[n]) {
    text += std::string("\n") + heading + ":\n";
    for (const Entry& entry : entries) ListEntry(text, entry.term, entry.meaning);
}

void ListOptions(std::string& text, const CLI::App& app) {
    text += "\nOptions:\n";
    for (const CLI::Option* option : app.get_options())
        ListEntry(text, Term(*option), option->get_description());
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

// The options of a command, as one types them.
std::string OptionWords(const CLI::App& app) {
    std::string words;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames()) words += (words.empty() ? "--" : " --") + name;
    return words;
}

}  // namespace

std::string HelpOf(const CLI::App& app) {
    std::string text;
    if (const CLI::App* program = app.get_parent()) {
        Wrap(text, 0, app.get_description());
        text += "\nUsage: ";
        Wrap(text, 7, program->get_name() + ' ' + Synopsis(app));
        ListOptions(text, app);
        if (app.get_name() == "build") ListEntries(text, "JSON", kJson);
        return text;
    }
    const std::string description = app.get_description();
    const std::size_t firstLine = description.find('\n');
    Wrap(text, 0, app.get_name() + ' ' + description.substr(0, firstLine) + '.');
    Wrap(text, 0, description.substr(firstLine));
    text += "\nUsage: " + app.get_name() + " COMMAND ...; " + app.get_name() + " COMMAND --help\n";
    ListOptions(text, app);
    text += "\nCommands:\n";
    for (const CLI::App* command : CommandsOf(app))
        ListEntry(text, command->get_name(), command->get_description());
    ListEntries(text, "Examples", kExamples);
    ListEntries(text, "Exit status", kStatuses);
    return text;
}

void PrintManual(const CLI::App& app, std::ostream& out) {
    const std::string description = app.get_description();
    const std::size_t firstLine = description.find('\n');
    out << ".TH ZELSKETCH 1 " << kDate << " \"" << app.version() << "\" \"User Commands\"\n"
        << ".SH NAME\n"
        << app.get_name() << " \\- " << Roff(description.substr(0, firstLine)) << '\n'
        << ".SH SYNOPSIS\n";
    const auto commands = CommandsOf(app);
    for (const CLI::App* command : commands)
        out << (command == commands[0] ? "" : ".br\n") << ".B " << app.get_name() << '\n'
            << Roff(Synopsis(*command)) << '\n';
    out << ".SH DESCRIPTION\n" << Roff(description.substr(firstLine + 1)) << "\n.SH OPTIONS\n";
    PrintOptions(app, out);
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : commands) {
        out << ".SS " << command->get_name() << '\n' << Roff(command->get_description()) << '\n';
        PrintOptions(*command, out);
    }
    PrintEntries(out, "JSON", kJson);
    PrintEntries(out, "EXIT STATUS", kStatuses);
    PrintEntries(out, "EXAMPLES", kExamples);
}

void PrintCompletion(const CLI::App& app, std::ostream& out) {
    std::string names, cases;
    for (const CLI::App* command : CommandsOf(app)) {
        names += command->get_name() + ' ';
        cases += "        " + command->get_name() + ") words='" + OptionWords(*command) + "' ;;\n";
    }
    const std::string& program = app.get_name();
    const std::string function = '_' + program;
    out << function << "() {\n"
        << "    local word=${COMP_WORDS[COMP_CWORD]} words=\n"
        << "    COMPREPLY=()\n"
        << "    case ${COMP_WORDS[1]} in\n"
        << cases << "    esac\n"
        << "    [ \"$COMP_CWORD\" -gt 1 ] || words='" << names << OptionWords(app) << "'\n"
        << "    if [ \"$COMP_CWORD\" -eq 1 ] || [ \"${word#-}\" != \"$word\" ]; then\n"
        << "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
        << "    fi\n"
        << "}\n"
        << "complete -o bashdefault -o default -F " << function << ' ' << program << '\n';
}

}  // namespace zel
