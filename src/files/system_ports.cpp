#include "files/system_ports.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <random>
#include <string_view>

#include "files/private_folder.h"
#include "files/program_start.h"

namespace tavlo {

namespace {

struct Moment {
  std::tm local{};
  double fraction = 0;  ///< of the second
};

Moment present() {
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const auto whole = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t seconds = system_clock::to_time_t(whole);
  Moment moment;
  localtime_r(&seconds, &moment.local);
  moment.fraction = std::chrono::duration<double>(now - whole).count();
  return moment;
}

double seconds_of_day(const Moment& moment) {
  const std::tm& local = moment.local;
  return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + moment.fraction;
}

bool is_program(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         ::access(path.c_str(), X_OK) == 0;
}

/// Empty where it is not known.
std::string name_of_process(const std::string& number) {
  std::ifstream file("/proc/" + number + "/comm");
  std::string name;
  std::getline(file, name);
  return name;
}

}  // namespace

double SystemClock::seconds_since_midnight() { return seconds_of_day(present()); }

DateTime SystemClock::now() {
  const std::tm local = present().local;
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
          local.tm_min,         local.tm_sec,     local.tm_wday};
}

double SystemClock::day_count() {
  using namespace std::chrono;
  const Moment moment = present();
  const sys_days today = year(moment.local.tm_year + 1900) /
                         month(static_cast<unsigned>(moment.local.tm_mon + 1)) /
                         day(static_cast<unsigned>(moment.local.tm_mday));
  constexpr sys_days zero = year(1899) / December / day(30);
  return static_cast<double>((today - zero).count()) + seconds_of_day(moment) / 86400.0;
}

double SystemClock::steady_seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::uint32_t RandomEntropy::next() {
  std::random_device device;
  return device();
}

std::string SystemHost::program_folder() {
  std::error_code fault;
  return std::filesystem::read_symlink("/proc/self/exe", fault).parent_path().string();
}

std::int64_t SystemHost::process_id() { return ::getpid(); }

// A number that a program had is given to another one some day, after a restart soon. Names
// tell them apart where the system shows them.
bool SystemHost::is_running(std::int64_t process_id) {
  if (::kill(static_cast<pid_t>(process_id), 0) != 0 && errno == ESRCH) return false;
  const std::string name = name_of_process(std::to_string(process_id));
  return name.empty() || name == name_of_process("self");
}

std::string SystemHost::temp_folder() {
  return private_temp_folder(environment("XDG_RUNTIME_DIR"), environment("TMPDIR"));
}

std::string SystemHost::environment(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value ? value : "";
}

std::optional<std::string> SystemHost::find_program(const std::string& name) {
  if (name.find('/') != std::string::npos)
    return is_program(name) ? std::optional(name) : std::nullopt;
  const std::string folders = environment("PATH") + ":";
  for (std::size_t start = 0, end; start < folders.size(); start = end + 1) {
    end = folders.find(':', start);
    const std::string path = folders.substr(start, end - start) + "/" + name;
    if (path.front() == '/' && end > start && is_program(path)) return path;
  }
  return std::nullopt;
}

FileResult SystemHost::start_program(const std::string& program,
                                     const std::vector<std::string>& arguments) {
  const auto path = find_program(program);
  if (!path) return {FileFault::not_found, "there is no such program"};
  return start_on_its_own(*path, arguments);
}

}  // namespace tavlo
