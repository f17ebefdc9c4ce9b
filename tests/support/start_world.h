// StartWorld: a machine to start on: an environment, programs, and folders that may be
// closed to the person or belong to others.
#pragma once

#include "files/path_system.h"
#include "support/test_world.h"

namespace tavlo::test {

class GuardedFiles : public MemoryFiles {
 public:
  FileResult try_out(const std::string& path, std::string_view bytes) override {
    return is_open(path) ? MemoryFiles::try_out(path, bytes) : refused();
  }
  FileResult write_whole(const std::string& path, std::string_view bytes) override {
    return is_open(path) ? MemoryFiles::write_whole(path, bytes) : refused();
  }
  FileResult look_up(const std::string& path, FileFacts& facts) override {
    facts.is_own = !foreign.contains(path);
    facts.is_read_only = read_only.contains(path);
    return MemoryFiles::look_up(path, facts);
  }

  std::set<std::string> closed, foreign, read_only;

 private:
  static FileResult refused() { return {FileFault::no_permission, "writing is not permitted"}; }
  bool is_open(const std::string& path) const {
    return !closed.contains(path.substr(0, path.find_last_of("/\\")));
  }
};

class FurnishedHost : public BareHost {
 public:
  std::string program_folder() override { return program; }
  std::string temp_folder() override { return temp; }
  std::string environment(const std::string& name) override { return variables[name]; }
  std::optional<std::string> find_program(const std::string& name) override {
    return programs.contains(name) ? std::optional(name) : std::nullopt;
  }
  FileResult start_program(const std::string& name,
                           const std::vector<std::string>& arguments) override {
    started = name;
    for (const std::string& each : arguments) started += "|" + each;
    return {};
  }

  std::string program = "/program", temp = "/temp", started;
  std::map<std::string, std::string> variables;
  std::set<std::string> programs;
};

struct StartWorld : TestWorld {
  Ports start_ports() {
    return {prompts, event_loop, clock, entropy,  clipboard, text_measure,
            disk,    machine,    views, progress, timer};
  }

  GuardedFiles disk;
  FurnishedHost machine;
};

}  // namespace tavlo::test
