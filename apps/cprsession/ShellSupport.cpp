// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ShellSupport.h"

#include <sstream>
#include <vector>

namespace ShellSupport {

namespace {

bool isShown(const CLI::App *verb)
{
    return !verb->get_group().empty();
}

std::vector<const CLI::App *> verbs(const CLI::App &app)
{
    return app.get_subcommands(isShown);
}

// The names of what a verb can be asked to do; none for most.
std::vector<std::string> parts(const CLI::App &verb)
{
    std::vector<std::string> names;
    for (const CLI::App *part : verbs(verb))
        names.push_back(part->get_name());
    return names;
}

// Those of a verb's parts, too.
std::vector<const CLI::Option *> options(const CLI::App &app)
{
    std::vector<const CLI::Option *> all =
        app.get_options([](const CLI::Option *option) { return !option->get_positional(); });
    for (const CLI::App *part : verbs(app)) {
        for (const CLI::Option *option : options(*part)) {
            if (!option->check_lname("help"))
                all.push_back(option);
        }
    }
    return all;
}

bool hasValue(const CLI::Option &option)
{
    return option.get_items_expected_max() > 0;
}

// "-o", "--output"
std::vector<std::string> spellings(const CLI::Option &option)
{
    std::vector<std::string> names;
    for (const std::string &name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string &name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

std::string joined(const std::vector<std::string> &texts, const std::string &separator)
{
    std::string result;
    for (const std::string &text : texts)
        result += (result.empty() ? "" : separator) + text;
    return result;
}

// The text with a backslash before each of these characters.
std::string escaped(const std::string &text, const std::string &characters)
{
    std::string result;
    for (char c : text) {
        if (characters.find(c) != std::string::npos)
            result += '\\';
        result += c;
    }
    return result;
}

// A text for troff: no hyphenation, and no line that begins with a control character.
std::string roff(const std::string &text)
{
    std::string result;
    for (char c : escaped(text, "\\-")) {
        if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n'))
            result += "\\&";
        result += c;
    }
    return result;
}

// What a verb takes besides options, for the manual.
std::string positionals(const CLI::App &verb)
{
    std::string text;
    for (const CLI::Option *option : verb.get_options()) {
        if (option->get_positional())
            text += " " + roff(option->get_type_name());
    }
    return text;
}

} // namespace

std::string bashCompletion(const CLI::App &app)
{
    std::ostringstream out;
    std::vector<std::string> names;
    for (const CLI::App *verb : verbs(app))
        names.push_back(verb->get_name());
    out << "# bash completion for " << app.get_name() << "\n"
        << "_" << app.get_name() << "() {\n"
        << "    local word=\"${COMP_WORDS[COMP_CWORD]}\" words\n"
        << "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
        << "        words=\"" << joined(names, " ") << " --help --version\"\n"
        << "    else\n"
        << "        case \"${COMP_WORDS[1]}\" in\n";
    for (const CLI::App *verb : verbs(app)) {
        std::vector<std::string> all;
        for (const CLI::Option *option : options(*verb)) {
            for (const std::string &name : spellings(*option))
                all.push_back(name);
        }
        const std::vector<std::string> named = parts(*verb);
        all.insert(all.end(), named.begin(), named.end());
        out << "            " << verb->get_name() << ") words=\"" << joined(all, " ") << "\" ;;\n";
    }
    out << "        esac\n"
        << "    fi\n"
        << "    case \"$word\" in\n"
        << "        -*) mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\") ;;\n"
        << "        *)  if [ \"$COMP_CWORD\" -eq 1 ]"
        << " || { [ \"$COMP_CWORD\" -eq 2 ] && [[ \" $words\" == *\" \"[a-z]* ]]; }; then\n"
        << "                mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
        << "            else\n"
        << "                mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
        << "            fi ;;\n"
        << "    esac\n"
        << "}\n"
        << "complete -o filenames -F _" << app.get_name() << " " << app.get_name() << "\n";
    return out.str();
}

std::string zshCompletion(const CLI::App &app)
{
    const auto quoted = [](const std::string &text) { return escaped(text, "\\[]:`$\""); };
    std::ostringstream out;
    out << "#compdef " << app.get_name() << "\n"
        << "local -a verbs\n"
        << "verbs=(\n";
    for (const CLI::App *verb : verbs(app)) {
        out << "    \"" << verb->get_name() << ":" << quoted(verb->get_description()) << "\"\n";
    }
    out << ")\n"
        << "if (( CURRENT == 2 )); then\n"
        << "    _describe verb verbs\n"
        << "    return\n"
        << "fi\n"
        << "case \"$words[2]\" in\n";
    for (const CLI::App *verb : verbs(app)) {
        out << "    " << verb->get_name() << ")\n"
            << "        _arguments";
        for (const CLI::Option *option : options(*verb)) {
            for (const std::string &name : spellings(*option)) {
                out << " \\\n            \"" << name << "[" << quoted(option->get_description())
                    << "]" << (hasValue(*option) ? ":value:_files" : "") << "\"";
            }
        }
        if (const std::vector<std::string> named = parts(*verb); !named.empty())
            out << " \\\n            \"1:part:(" << joined(named, " ") << ")\"";
        out << " \\\n            \"*:file:_files\"\n"
            << "        ;;\n";
    }
    out << "esac\n";
    return out.str();
}

std::string fishCompletion(const CLI::App &app)
{
    const auto quoted = [](const std::string &text) { return "'" + escaped(text, "\\'") + "'"; };
    std::ostringstream out;
    const std::string &program = app.get_name();
    for (const CLI::App *verb : verbs(app)) {
        out << "complete -c " << program << " -n __fish_use_subcommand -f -a " << verb->get_name()
            << " -d " << quoted(verb->get_description()) << "\n";
        for (const CLI::App *part : verbs(*verb))
            out << "complete -c " << program << " -n '__fish_seen_subcommand_from "
                << verb->get_name() << "' -f -a " << part->get_name() << " -d "
                << quoted(part->get_description()) << "\n";
        for (const CLI::Option *option : options(*verb)) {
            out << "complete -c " << program << " -n '__fish_seen_subcommand_from "
                << verb->get_name() << "'";
            for (const std::string &name : option->get_snames())
                out << " -s " << name;
            for (const std::string &name : option->get_lnames())
                out << " -l " << name;
            out << (hasValue(*option) ? " -r" : "") << " -d " << quoted(option->get_description())
                << "\n";
        }
    }
    return out.str();
}

std::string manPage(const CLI::App &app, const std::string &version)
{
    std::ostringstream out;
    const std::string &program = app.get_name();
    out << ".TH " << program << " 1 \"\" \"" << version << "\"\n"
        << ".SH NAME\n"
        << program << " \\- " << roff(app.get_description()) << "\n"
        << ".SH SYNOPSIS\n"
        << ".B " << program << "\n"
        << ".I verb\n"
        << "[options]\n"
        << ".SH VERBS\n";
    for (const CLI::App *verb : verbs(app)) {
        out << ".SS " << program << " " << verb->get_name() << positionals(*verb) << "\n"
            << roff(verb->get_description()) << ".\n";
        for (const CLI::App *part : verbs(*verb))
            out << ".TP\n\\fB" << part->get_name() << "\\fR" << positionals(*part) << "\n"
                << roff(part->get_description()) << "\n";
        for (const CLI::Option *option : options(*verb)) {
            out << ".TP\n\\fB" << roff(joined(spellings(*option), ", ")) << "\\fR";
            if (hasValue(*option))
                out << " \\fI" << roff(option->get_type_name()) << "\\fR";
            out << "\n" << roff(option->get_description()) << "\n";
        }
        out << ".PP\n.nf\n" << roff(verb->get_footer()) << "\n.fi\n";
    }
    out << ".SH EXIT STATUS\n" << roff(app.get_footer()) << "\n";
    return out.str();
}

} // namespace ShellSupport
