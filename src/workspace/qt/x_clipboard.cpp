#include "workspace/qt/x_clipboard.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>

namespace tavlo {

namespace {

using SteadyClock = std::chrono::steady_clock;

// An owner that hangs must not hang this program; the toolkit waits as long for each part. One
// that goes on and on is left too.
constexpr std::chrono::seconds patience{5};
constexpr std::chrono::seconds most_patience{20};
constexpr std::size_t endless = std::numeric_limits<std::size_t>::max();

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, FreeReply>;

/// A connection of its own, so that no event of the toolkit is taken away.
class Selection {
 public:
  Selection() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_)) return;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    window_ = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    selection_ = atom("CLIPBOARD");
    parts_ = atom("INCR");
    property_ = atom("TAVLO_LENGTH");
  }
  ~Selection() { xcb_disconnect(connection_); }
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  /// The length of a form; nothing when the owner does not give it. All parts are taken, as
  /// some owners end when one is not, and none is kept.
  std::optional<std::size_t> length(const char* form) {
    if (xcb_connection_has_error(connection_)) return std::nullopt;
    const xcb_atom_t target = atom(form);
    xcb_convert_selection(connection_, window_, selection_, target, property_, XCB_CURRENT_TIME);
    Owned<xcb_generic_event_t> answer;
    const auto said = [&answer] {
      return reinterpret_cast<const xcb_selection_notify_event_t*>(answer.get());
    };
    do answer = wait_for(XCB_SELECTION_NOTIFY);
    while (answer && said()->target != target);
    if (!answer || said()->property == XCB_NONE) return std::nullopt;
    bool comes_in_parts = false;
    const std::size_t first = take_property(comes_in_parts);
    return comes_in_parts ? length_of_parts() : first;
  }

 private:
  xcb_atom_t atom(const char* name) {
    const auto cookie =
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_NONE};
  }

  Owned<xcb_generic_event_t> wait_for(int kind) {
    constexpr int sent_by_program = 0x80;
    xcb_flush(connection_);
    while (!xcb_connection_has_error(connection_) && SteadyClock::now() < end_) {
      Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
      if (event && (event->response_type & ~sent_by_program) == kind) return event;
      if (event) continue;
      pollfd input{xcb_get_file_descriptor(connection_), POLLIN, 0};
      constexpr int milliseconds_of_wait = 100;
      poll(&input, 1, milliseconds_of_wait);
    }
    return nullptr;
  }

  /// Removes the property, which asks for the next part; its length in bytes.
  std::size_t take_property(bool& comes_in_parts) {
    const auto cookie =
        xcb_get_property(connection_, 0, window_, property_, XCB_GET_PROPERTY_TYPE_ANY, 0, 0);
    const Owned<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_, cookie, nullptr));
    xcb_delete_property(connection_, window_, property_);
    comes_in_parts = reply && reply->type == parts_;
    return reply ? reply->bytes_after : 0;
  }

  std::size_t length_of_parts() {
    std::size_t length = 0;
    while (const auto event = wait_for(XCB_PROPERTY_NOTIFY)) {
      const auto& change = *reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
      if (change.state != XCB_PROPERTY_NEW_VALUE || change.atom != property_) continue;
      bool ignored = false;
      const std::size_t part = take_property(ignored);
      xcb_flush(connection_);
      if (part == 0) return length;
      length += part;
      end_ = std::min(SteadyClock::now() + patience, last_end_);
    }
    return endless;  // what has not come to its end in time is not taken for short
  }

  SteadyClock::time_point end_ = SteadyClock::now() + patience;
  const SteadyClock::time_point last_end_ = SteadyClock::now() + most_patience;
  xcb_connection_t* connection_;
  xcb_window_t window_ = XCB_NONE;
  xcb_atom_t selection_ = XCB_NONE;
  xcb_atom_t parts_ = XCB_NONE;
  xcb_atom_t property_ = XCB_NONE;
};

}  // namespace

bool x_clipboard_exceeds(std::span<const char* const> forms, std::size_t most) {
  Selection selection;
  for (const char* const form : forms)
    if (const auto length = selection.length(form)) return *length > most;
  return false;
}

}  // namespace tavlo
