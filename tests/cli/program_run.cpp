#include "program_run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tavlo::test {

namespace {

void redirect(const std::filesystem::path& path, int flags, int number) {
  const int file = ::open(path.c_str(), flags, 0600);
  if (file < 0 || ::dup2(file, number) < 0) ::_exit(126);
}

[[noreturn]] void become(const std::filesystem::path& folder, const std::string& program,
                         std::vector<std::string> words) {
  redirect(folder / ".in", O_RDONLY, STDIN_FILENO);
  redirect(folder / ".out", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
  redirect(folder / ".err", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
  words.insert(words.begin(), program);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  ::setenv("CLI", TAVLO_CLI, 1);
  ::setenv("VKMACRO", TAVLO_VKMACRO, 1);
  ::setenv("EXAMPLES", TAVLO_EXAMPLES, 1);
  ::setenv("DATA", TAVLO_TEST_DATA, 1);
  if (::chdir(folder.c_str()) == 0) ::execv(program.c_str(), pointers.data());
  ::_exit(127);
}

}  // namespace

std::vector<nlohmann::json> ProgramRun::json() const {
  std::vector<nlohmann::json> objects;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);) objects.push_back(nlohmann::json::parse(line));
  return objects;
}

CliFolder::CliFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "tavlo-cli-XXXXXX").string();
  folder_ = ::mkdtemp(name.data());
}

CliFolder::~CliFolder() { std::filesystem::remove_all(folder_); }

ProgramRun CliFolder::run(const std::vector<std::string>& arguments,
                          const std::string& input) const {
  return run_program(TAVLO_CLI, arguments, input);
}

ProgramRun CliFolder::shell(const std::string& line) const {
  return run_program("/bin/bash", {"-c", line}, "");
}

ProgramRun CliFolder::run_program(const std::string& program, std::vector<std::string> words,
                                  const std::string& input) const {
  write(".in", input);
  const pid_t child = ::fork();
  if (child == 0) become(folder_, program, std::move(words));
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read(".out"), read(".err"),
          usage.ru_maxrss};
}

void CliFolder::write(const std::string& name, const std::string& bytes) const {
  std::ofstream(path(name), std::ios::binary) << bytes;
}

std::string CliFolder::read(const std::string& name) const {
  std::ifstream file(path(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string example(const std::string& name) { return std::string(TAVLO_EXAMPLES) + "/" + name; }

}  // namespace tavlo::test
