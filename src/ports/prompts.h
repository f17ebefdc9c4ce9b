// Prompts: everything that the program asks of, or tells, the person in front
// of it. The windows show real boxes, the command line answers from its flags,
// the tests follow a script.
#pragma once

#include <optional>
#include <string>

namespace tavlo {

enum class BoxIcon { none, information, question, exclamation, stop };
enum class BoxButtons { ok, ok_cancel, yes_no, yes_no_cancel, retry_cancel };
enum class BoxAnswer { ok, cancel, yes, no, retry };

/// A modal message. `text` is UTF-8 and may hold line breaks ("\n").
struct Box {
  std::string title;
  std::string text;
  BoxIcon icon = BoxIcon::none;
  BoxButtons buttons = BoxButtons::ok;
};

/// A request for a file name. `filter` reads "All (*.*)|*.*|Text (*.txt)|*.txt".
struct FileRequest {
  std::string title;
  std::string filter;
  int filter_index = 1;
  bool saving = false;
  /// Whether a name that is taken is asked about, when saving.
  bool ask_before_replacing = true;
  /// What ends a name without an extension, as "wmf", where the kind of file that was
  /// chosen has none of its own; nothing when it is empty. It is added before a name that
  /// is taken is asked about.
  std::string default_suffix = {};
  /// The extension, as "tavlo", of a kind of file that gives it to every name: under the other
  /// kinds a name is complete with the extension of any kind that is offered.
  std::string own_suffix = {};
  /// The path that is chosen where the person says nothing else; empty for none.
  std::string suggestion = {};
};

class Prompts {
 public:
  virtual ~Prompts() = default;

  /// Shows the box and waits for the answer, which is one of its buttons.
  virtual BoxAnswer show(const Box& box) = 0;

  /// Asks for one line of text; nothing when the person cancels.
  virtual std::optional<std::string> ask_line(const std::string& title, const std::string& text,
                                              const std::string& suggestion) = 0;

  /// Asks for a file name; nothing when the person cancels.
  virtual std::optional<std::string> choose_file(const FileRequest& request) = 0;
};

}  // namespace tavlo
