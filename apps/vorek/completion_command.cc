#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "command.h"
#include "text/utf8.h"

namespace vorek {
namespace {

// What a shell needs to know of an option.
struct CompletedOption {
  std::string name;         // without its dashes
  std::string description;  // in one line
  bool takes_value = false;
  std::vector<std::string> choices;  // empty for a value of any kind
};

struct CompletedCommand {
  std::string name;
  std::string description;
  std::vector<CompletedOption> options;
  std::vector<std::string> arguments;  // choices of what stands behind it; empty for files
};

// "TEXT:{table,tsv,json}", as an option of one out of some describes its type.
std::vector<std::string> ChoicesOf(const std::string& type) {
  std::vector<std::string> choices;
  const std::size_t begin = type.find('{');
  if (begin == std::string::npos) return choices;
  std::string choice;
  for (const char c : type.substr(begin + 1)) {
    if (c != ',' && c != '}') {
      choice += c;
      continue;
    }
    choices.push_back(choice);
    choice.clear();
  }
  return choices;
}

CompletedOption CompletedFrom(const CLI::Option& option) {
  return {option.get_lnames().front(), option.get_description(),
          option.get_items_expected_max() > 0, ChoicesOf(option.get_type_name())};
}

CompletedCommand CompletedFrom(const CLI::App& command) {
  CompletedCommand completed{command.get_name(), command.get_description(), {}, {}};
  for (const CLI::Option* const option : command.get_options()) {
    if (option->get_lnames().empty()) {
      completed.arguments = ChoicesOf(option->get_type_name());
    } else {
      completed.options.push_back(CompletedFrom(*option));
    }
  }
  return completed;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + word;
  return line;
}

std::vector<std::string> Names(const std::vector<CompletedCommand>& commands) {
  std::vector<std::string> names;
  for (const CompletedCommand& command : commands) names.push_back(command.name);
  return names;
}

void WriteBash(const std::vector<CompletedCommand>& commands, std::ostream& out) {
  out << "# Completion of vorek for bash: source it.\n"
         "_vorek() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} words=\n"
         "  case \"${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD-1]}\" in\n";
  const auto offer = [&out](const std::string& behind, const std::vector<std::string>& choices) {
    if (!choices.empty()) out << "    '" << behind << "') words='" << Joined(choices) << "' ;;\n";
  };
  for (const CompletedCommand& command : commands) {
    offer(command.name + " " + command.name, command.arguments);
    for (const CompletedOption& option : command.options) {
      offer(command.name + " --" + option.name, option.choices);
    }
  }
  out << "  esac\n  if [ -z \"$words\" ] && [[ $word == -* ]]; then\n    case ${COMP_WORDS[1]} "
         "in\n";
  for (const CompletedCommand& command : commands) {
    std::vector<std::string> options;
    for (const CompletedOption& option : command.options) options.push_back("--" + option.name);
    out << "      " << command.name << ") words='" << Joined(options) << "' ;;\n";
  }
  out << "    esac\n  fi\n  [ \"$COMP_CWORD\" -gt 1 ] || words='" << Joined(Names(commands))
      << "'\n  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n}\n"
         "complete -o default -F _vorek vorek\n";
}

// A text in single quotes of a shell.
std::string Quoted(const std::string& text) {
  return "'" + text::Replace(text, "'", "'\\''") + "'";
}

// Brackets and colons part what zsh reads.
std::string ZshText(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') out += '\\';
    out += c;
  }
  return out;
}

std::string ZshOption(const CompletedOption& option) {
  std::string text = "--" + option.name + "[" + ZshText(option.description) + "]";
  if (!option.takes_value) return Quoted(text);
  text += ":" + option.name + ":";
  return Quoted(text + (option.choices.empty() ? "_files" : "(" + Joined(option.choices) + ")"));
}

void WriteZsh(const std::vector<CompletedCommand>& commands, std::ostream& out) {
  out << "#compdef vorek\n"
         "# Completion of vorek for zsh: put it into a folder of $fpath as _vorek.\n"
         "local -a commands=(\n";
  for (const CompletedCommand& command : commands) {
    out << "  " << Quoted(command.name + ":" + ZshText(command.description)) << '\n';
  }
  out << ")\nif (( CURRENT == 2 )); then\n  _describe command commands\n  return\nfi\n"
         "local command=$words[2]\nshift words\n(( CURRENT-- ))\ncase $command in\n";
  for (const CompletedCommand& command : commands) {
    out << "  " << command.name << ") _arguments";
    for (const CompletedOption& option : command.options) out << " \\\n    " << ZshOption(option);
    const std::string arguments =
        command.arguments.empty() ? "_files" : "(" + Joined(command.arguments) + ")";
    out << " \\\n    '*:argument:" << arguments << "' ;;\n";
  }
  out << "esac\n";
}

void WriteFish(const std::vector<CompletedCommand>& commands, std::ostream& out) {
  out << "# Completion of vorek for fish: put it into ~/.config/fish/completions as vorek.fish.\n";
  for (const CompletedCommand& command : commands) {
    out << "complete -c vorek -n __fish_use_subcommand -f -a " << command.name << " -d "
        << Quoted(command.description) << '\n';
    const std::string within =
        "complete -c vorek -n '__fish_seen_subcommand_from " + command.name + "'";
    if (!command.arguments.empty()) {
      out << within << " -f -a " << Quoted(Joined(command.arguments)) << '\n';
    }
    for (const CompletedOption& option : command.options) {
      out << within << " -l " << option.name << " -d " << Quoted(option.description)
          << (option.takes_value ? " -r" : "");
      if (!option.choices.empty()) out << " -f -a " << Quoted(Joined(option.choices));
      out << '\n';
    }
  }
}

void WriteCompletion(const CLI::App& app, const std::string& shell) {
  std::vector<CompletedCommand> commands;
  for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
    commands.push_back(CompletedFrom(*command));
  }
  (shell == "bash" ? WriteBash : shell == "zsh" ? WriteZsh : WriteFish)(commands, std::cout);
}

}  // namespace

void AddCompletionCommand(CLI::App& app) {
  auto shell = std::make_shared<std::string>();
  CLI::App* const command =
      app.add_subcommand("completion", "Write what completes these commands in a shell");
  command->add_option("SHELL", *shell, "bash, zsh or fish")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  command->callback([&app, shell] { WriteCompletion(app, *shell); });
}

}  // namespace vorek
