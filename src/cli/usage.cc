#include "cli/usage.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "cli/texts.h"

namespace customsconv::cli {
namespace {

// How many letters must be typed, left out, replaced or swapped with their neighbours to make one
// word of the other.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before_last;
  std::vector<std::size_t> last(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> row(b.size() + 1, i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before_last[j - 2] + 1);
    }
    before_last = std::move(last);
    last = std::move(row);
  }
  return last.back();
}

// The option of the command, or of one above it, that goes by this name.
const CLI::Option* FindOption(const CLI::App* command, const std::string& name) {
  for (; command != nullptr; command = command->get_parent()) {
    if (const CLI::Option* option = command->get_option_no_throw(name)) return option;
  }
  return nullptr;
}

std::vector<std::string> OptionsOf(const CLI::App* command) {
  std::vector<std::string> names;
  for (; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* option : command->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  return names;
}

using Commands = std::vector<const CLI::App*>;

const CLI::App* FindCommand(const Commands& commands, const std::string& name) {
  const auto found = std::find_if(commands.begin(), commands.end(), [&](const CLI::App* command) {
    return command->get_name() == name;
  });
  return found == commands.end() ? nullptr : *found;
}

std::vector<std::string> NamesOf(const Commands& commands) {
  std::vector<std::string> names;
  for (const CLI::App* command : commands) names.push_back(command->get_name());
  return names;
}

std::string Unknown(Text text, Text with_nearest, const std::string& word,
                    const std::vector<std::string>& known) {
  const std::string nearest = NearestWord(word, known);
  return nearest.empty() ? Say(text, {word}) : Say(with_nearest, {word, nearest});
}

}  // namespace

std::string NearestWord(std::string_view typed, const std::vector<std::string>& words) {
  // A third of the letters may be wrong.
  std::size_t nearest = std::max<std::size_t>(typed.size() / 3, 1) + 1;
  std::string found;
  for (const std::string& word : words) {
    const std::size_t distance = Distance(typed, word);
    if (distance >= nearest) continue;
    nearest = distance;
    found = word;
  }
  return found;
}

std::string UnknownWord(const CLI::App& app, const std::vector<std::string>& arguments) {
  const CLI::App* command = &app;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (word == "--") return {};
    if (word.size() > 1 && word[0] == '-') {
      const std::size_t name_end = word.find('=');
      const CLI::Option* option = FindOption(command, word.substr(0, name_end));
      if (option == nullptr) {
        return Unknown(texts::kUnknownOption, texts::kUnknownOptionNearest,
                       word.substr(0, name_end), OptionsOf(command));
      }
      if (name_end == std::string::npos && option->get_items_expected_max() > 0) ++i;
    } else if (const Commands commands = command->get_subcommands({}); !commands.empty()) {
      command = FindCommand(commands, word);
      if (command == nullptr) {
        return Unknown(texts::kUnknownCommand, texts::kUnknownCommandNearest, word,
                       NamesOf(commands));
      }
    }
  }
  return {};
}

std::vector<std::string> WithoutHelpCommand(std::vector<std::string> arguments) {
  if (arguments.empty() || arguments.front() != "help") return arguments;
  arguments.erase(arguments.begin());
  arguments.emplace_back("--help");
  return arguments;
}

}  // namespace customsconv::cli
