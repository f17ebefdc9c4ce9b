#include "cli/line_reader.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tavlo::cli {

namespace {

/// Few enough that slow fits are shared between the cores, enough that fast ones cost no
/// more than they must.
constexpr std::size_t most_lines = 16;
constexpr std::size_t usual_buffer = std::size_t{1} << 18;

}  // namespace

bool LineReader::next(Handful& handful) {
  handful.lines.clear();
  handful.text.clear();
  for (;;) {
    if (take_lines(handful)) return true;
    skip_long_line();
    if (at_end_) break;
    at_end_ = !read_more();
    if (skipping_ && at_end_) break;
  }
  take_end(handful);
  return !handful.lines.empty();
}

/// Moves whole lines into the handful; false when none is whole yet.
bool LineReader::take_lines(Handful& handful) {
  std::size_t sizes[most_lines];
  std::size_t count = 0;
  std::size_t taken = 0;
  while (count < most_lines) {
    const std::size_t from = std::max(taken, searched_);
    const std::size_t place = waiting().find('\n', from);
    if (place == std::string_view::npos) break;
    sizes[count++] = place - taken;
    taken = place + 1;
    if (taken > usual_buffer) break;  // a long line stands alone
  }
  searched_ = count == 0 ? waiting().size() : 0;
  if (count == 0) return false;
  handful.text.reserve(taken + padding);
  handful.text = waiting().substr(0, taken);
  const char* line = handful.text.data();
  for (std::size_t i = 0; i < count; line += sizes[i++] + 1) {
    const bool too_long = sizes[i] > longest_line || skipping_;
    handful.lines.push_back(too_long ? std::string_view() : std::string_view(line, sizes[i]));
    skipping_ = false;
  }
  start_ += taken;
  return true;
}

/// The last line may have no end.
void LineReader::take_end(Handful& handful) {
  if (skipping_)
    handful.lines.emplace_back();
  else if (start_ < end_) {
    handful.text.reserve(end_ - start_ + padding);
    handful.text = waiting();
    handful.lines.emplace_back(handful.text);
  }
  skipping_ = false;
  start_ = end_;
}

/// A line that has grown too long is thrown away up to its end.
void LineReader::skip_long_line() {
  if (!skipping_ && end_ - start_ <= longest_line) return;
  skipping_ = true;
  start_ = end_;
  searched_ = 0;
}

/// False at the end of the input.
bool LineReader::read_more() {
  if (start_ == end_ && buffer_.size() > usual_buffer) std::string().swap(buffer_);
  if (start_ > 0) std::memmove(buffer_.data(), buffer_.data() + start_, end_ - start_);
  end_ -= start_;
  start_ = 0;
  if (end_ == buffer_.size())
    buffer_.resize(std::clamp(end_ * 2, usual_buffer, longest_line + usual_buffer));
  for (;;) {
    const ssize_t got = ::read(file_, buffer_.data() + end_, buffer_.size() - end_);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) error_ = errno;
    end_ += static_cast<std::size_t>(std::max<ssize_t>(got, 0));
    return got > 0;
  }
}

}  // namespace tavlo::cli
