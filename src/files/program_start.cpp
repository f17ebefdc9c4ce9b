#include "files/program_start.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace tavlo {

namespace {

/// What execv takes: borrowed texts, made before the process forks, since nothing may be
/// allocated between fork and exec.
std::vector<char*> words_for_exec(std::string& path, std::vector<std::string>& arguments) {
  std::vector<char*> words = {path.data()};
  for (std::string& each : arguments) words.push_back(each.data());
  words.push_back(nullptr);
  return words;
}

/// Every file but the three standard ones closes with exec.
void close_files_at_exec() {
  constexpr int first = 3;
  if (::close_range(first, ~0U, CLOSE_RANGE_CLOEXEC) == 0) return;
  const long most = ::sysconf(_SC_OPEN_MAX);
  for (int file = first; file < most; ++file) ::fcntl(file, F_SETFD, FD_CLOEXEC);
}

// An ignored or blocked signal would stay so in the new program.
void restore_signals() {
  for (int signal = 1; signal < NSIG; ++signal) std::signal(signal, SIG_DFL);
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

void detach_standard_files() {
  const int nowhere = ::open("/dev/null", O_RDWR);
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nowhere, file);
}

/// In the child: starts the program in a child of its own, so that the system and not
/// this program has to see to its end. The error of a start that fails goes down the pipe.
[[noreturn]] void become_starter(char* const* words, int pipe) {
  ::setsid();
  const pid_t program = ::fork();
  if (program == 0) {
    restore_signals();
    detach_standard_files();
    close_files_at_exec();
    ::execv(words[0], words);
  }
  if (program <= 0) {
    const int error = errno;
    [[maybe_unused]] const ssize_t put = ::write(pipe, &error, sizeof error);
  }
  ::_exit(0);
}

FileResult fault_of_start(int error) {
  if (error == EACCES || error == EPERM)
    return {FileFault::no_permission, "starting it is not permitted"};
  return {FileFault::device_error, std::string("starting it failed: ") + std::strerror(error)};
}

/// Waits for the starter; the error that it sent, 0 for none.
int error_of_starter(pid_t starter, int pipe) {
  int error = 0;
  ssize_t got;
  do got = ::read(pipe, &error, sizeof error);
  while (got < 0 && errno == EINTR);
  while (::waitpid(starter, nullptr, 0) < 0 && errno == EINTR) {
  }
  return error;
}

}  // namespace

FileResult start_on_its_own(const std::string& path, const std::vector<std::string>& arguments) {
  std::string program = path;
  std::vector<std::string> own_arguments = arguments;
  const std::vector<char*> words = words_for_exec(program, own_arguments);
  std::array<int, 2> pipe{};
  if (::pipe2(pipe.data(), O_CLOEXEC) != 0) return fault_of_start(errno);
  const pid_t starter = ::fork();
  if (starter == 0) become_starter(words.data(), pipe[1]);
  const int error_of_fork = errno;
  ::close(pipe[1]);
  const int error = starter < 0 ? error_of_fork : error_of_starter(starter, pipe[0]);
  ::close(pipe[0]);
  return error == 0 ? FileResult() : fault_of_start(error);
}

}  // namespace tavlo
