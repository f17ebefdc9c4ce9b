#include "cli/help_pages.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <vector>

#include "cli/nearest_word.h"
#include "life/models.h"

namespace tavlo::cli {

namespace {

constexpr CommandExample examples[] = {
    {"fit", "tavlo-cli fit ball-bearings.txt --model W2P,LN --method rr --b-life 1,10"},
    {"rank", "tavlo-cli rank censored-test.txt --ranks exact"},
    {"compare", "tavlo-cli compare ball-bearings.txt --method rr --models W2P,N,LN"},
    {"chart", "tavlo-cli chart ball-bearings.txt bearings.svg --fit W2P/mle --type report"},
    {"report", "tavlo-cli report ball-bearings.txt bearings.pdf --model W2P --method mle"},
    {"convert", "tavlo-cli convert remission-6mp.csv remission.tavlo"},
    {"batch", "echo '{\"id\":7,\"x\":[54,187,216],\"method\":\"mle\"}' | tavlo-cli batch"},
    {"sample", "tavlo-cli sample --model W2P --row eta=1000,beta=2 --size 30 --seeds 1,2,3,4"},
};

std::vector<const CLI::App*> commands_of(const CLI::App& app) {
  return app.get_subcommands([](const CLI::App*) { return true; });
}

/// "--model", "-q" ..., without the files that have no dash.
std::vector<std::string> options_of(const CLI::App& command) {
  std::vector<std::string> options;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) options.push_back("--" + name);
    for (const std::string& name : option->get_snames()) options.push_back("-" + name);
  }
  return options;
}

std::string joined(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + word;
  return line;
}

/// As troff takes it: no command, no escape, and a minus that can be copied.
std::string troff(std::string_view text) {
  std::string escaped;
  bool begins_line = true;
  for (const char c : text) {
    if (begins_line && (c == '.' || c == '\'')) escaped += "\\&";
    if (c == '\\') escaped += "\\e";
    if (c == '-') escaped += "\\-";
    if (c != '\\' && c != '-') escaped += c;
    begins_line = c == '\n';
  }
  return escaped;
}

std::string preformatted(const std::string& text) { return ".nf\n" + troff(text) + "\n.fi\n"; }

std::string page_head(const std::string& name, const std::string& version,
                      const std::string& purpose) {
  return ".TH " + troff(name) + " 1 \"\" \"" + troff(version) + "\"\n.SH NAME\n" + troff(name) +
         " \\- " + troff(purpose) + "\n";
}

std::string option_paragraph(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  return ".TP\n.B " +
         troff(option.nonpositional() ? option.get_name(false, true) : option.get_name(true)) +
         (type.empty() ? "" : " \\fI" + troff(type)) + "\\fR\n" + troff(option.get_description()) +
         "\n";
}

std::string command_section(const CLI::App& command) {
  std::string section =
      ".SS " + troff(command.get_name()) + "\n" + troff(command.get_description()) + "\n";
  for (const CLI::Option* option : command.get_options()) section += option_paragraph(*option);
  if (!command.get_footer().empty()) section += ".PP\n" + preformatted(command.get_footer());
  return section;
}

std::string model_names() {
  std::string names;
  for (const Model& model : tavlo::models())
    if (*model.command_name) names += (names.empty() ? "" : " ") + std::string(model.command_name);
  return names;
}

}  // namespace

std::span<const CommandExample> command_examples() { return examples; }

std::vector<std::string> command_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : commands_of(app)) names.push_back(command->get_name());
  return names;
}

void add_examples(CLI::App& app) {
  for (const CommandExample& example : examples) {
    CLI::App& command = *app.get_subcommand(std::string(example.command));
    const std::string before = command.get_footer();
    command.footer((before.empty() ? "" : before + "\n\n") + "Example:\n  " +
                   std::string(example.line));
  }
}

std::string man_page(const CLI::App& app, const std::string& version) {
  std::string page = page_head(app.get_name(), version, "life data analysis") +
                     ".SH SYNOPSIS\n.B " + troff(app.get_name()) +
                     "\n\\fICOMMAND\\fR [\\fIoptions\\fR] \\fIFILE\\fR...\n.SH OPTIONS\n";
  for (const CLI::Option* option : app.get_options()) page += option_paragraph(*option);
  page += ".SH COMMANDS\n";
  for (const CLI::App* command : commands_of(app)) page += command_section(*command);
  return page + ".SH EXIT STATUS\n" + troff(app.get_footer()) + "\n.SH SEE ALSO\nvkmacro(1)\n";
}

std::string plain_man_page(const std::string& name, const std::string& version,
                           const std::string& help) {
  return page_head(name, version, "runs a macro of Tavlo") + ".SH DESCRIPTION\n" +
         preformatted(help) + ".SH SEE ALSO\ntavlo\\-cli(1)\n";
}

std::string bash_completion(const CLI::App& app) {
  std::string cases;
  for (const CLI::App* command : commands_of(app))
    cases += "    " + command->get_name() + ") options='" + joined(options_of(*command)) + "' ;;\n";
  return "# Completion of tavlo-cli for bash: source <(tavlo-cli --completion)\n"
         "_tavlo_cli() {\n"
         "  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} options\n"
         "  COMPREPLY=()\n"
         "  case $before in\n"
         "    --model|--models) COMPREPLY=($(compgen -W '" +
         model_names() +
         "' -- \"$word\")); return ;;\n"
         "    --method) COMPREPLY=($(compgen -W 'rr mle rrs' -- \"$word\")); return ;;\n"
         "    --ranks) COMPREPLY=($(compgen -W 'benard exact' -- \"$word\")); return ;;\n"
         "    --decimal) COMPREPLY=($(compgen -W 'comma point' -- \"$word\")); return ;;\n"
         "  esac\n"
         "  if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
         "    options='" +
         joined(command_names(app)) + " " + joined(options_of(app)) +
         "'\n"
         "    COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
         "    return\n"
         "  fi\n"
         "  case ${COMP_WORDS[1]} in\n" +
         cases +
         "  esac\n"
         "  if [[ $word == -* ]]; then COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
         "  else compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- \"$word\"); fi\n"
         "}\n"
         "complete -F _tavlo_cli tavlo-cli\n";
}

std::string words_of(const CLI::App& app, const CLI::ParseError& error) {
  if (!dynamic_cast<const CLI::ExtrasError*>(&error)) return error.what();
  const auto chosen = app.get_subcommands();
  const std::vector<std::string> rest = app.remaining(true);
  const auto wrong = std::find_if(rest.begin(), rest.end(),
                                  [](const std::string& word) { return word.starts_with('-'); });
  if (chosen.empty() || wrong == rest.end()) return error.what();
  const std::string option = wrong->substr(0, wrong->find('='));
  return "'" + option + "' is no option of " + chosen.front()->get_name() +
         did_you_mean(option, options_of(*chosen.front()));
}

}  // namespace tavlo::cli
