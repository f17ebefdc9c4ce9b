#include "cli/output.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/progress_line.h"
#include "cli/shown_text.h"

namespace tavlo::cli {

namespace {

/// Results are handed on in pieces of this size.
constexpr std::size_t piece = 1 << 16;

struct Output {
  const char* program = "tavlo-cli";
  bool is_quiet = false;
  std::string waiting;
  int error = 0;  ///< of the system, once writing has failed
};

Output& output() {
  static Output the_output;
  return the_output;
}

/// 0, or the error of the system.
int write_all(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t put = ::write(file, text.data(), text.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(put));
  }
  return 0;
}

std::string words_of(int error) {
  switch (error) {
    case EPIPE: return "its reader has gone away";
    case ENOSPC:
    case EDQUOT: return "the disk is full";
    default: return std::strerror(error);
  }
}

}  // namespace

void name_program(const char* name) { output().program = name; }

const char* program_name() { return output().program; }

void complain(const std::string& what) {
  flush_output();  // so that messages stand behind the results before them
  const TerminalTurn turn;
  write_all(STDERR_FILENO, std::string(output().program) + ": " + shown_text(what) + "\n");
}

void warn(const std::string& subject, const std::string& what) {
  if (!is_quiet()) complain((subject.empty() ? "" : subject + ": ") + "warning: " + what);
}

void be_quiet() { output().is_quiet = true; }

bool is_quiet() { return output().is_quiet; }

bool print(std::string_view text) {
  Output& out = output();
  if (out.error != 0) return false;
  out.waiting += text;
  return out.waiting.size() < piece || flush_output();
}

bool flush_output() {
  Output& out = output();
  if (out.error == 0 && !out.waiting.empty()) {
    const TerminalTurn turn;
    out.error = write_all(STDOUT_FILENO, out.waiting);
  }
  out.waiting.clear();
  return out.error == 0;
}

bool output_stands() { return output().error == 0; }

ExitCode finish_output(ExitCode code) {
  if (flush_output()) return code;
  complain("standard output can't be written: " + words_of(output().error));
  return ExitCode::file_fault;
}

}  // namespace tavlo::cli
