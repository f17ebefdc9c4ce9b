// Help pages: what is made of the commands and their options besides --help: an example for each
// command, a man page, completion for bash, and words for what was mistyped. All are made of the
// same texts.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace tavlo::cli {

struct CommandExample {
  std::string_view command;
  std::string_view line;  ///< with files that stand among the examples of the program
};

std::span<const CommandExample> command_examples();

std::vector<std::string> command_names(const CLI::App& app);

/// Puts its example behind the help of each command.
void add_examples(CLI::App& app);

/// The page for man, as troff.
std::string man_page(const CLI::App& app, const std::string& version);

/// A text that is indented in a page for man: the help of a program without commands.
std::string plain_man_page(const std::string& name, const std::string& version,
                           const std::string& help);

/// A script for bash.
std::string bash_completion(const CLI::App& app);

/// What is wrong with the words of a command line, and what may have been meant.
std::string words_of(const CLI::App& app, const CLI::ParseError& error);

}  // namespace tavlo::cli
