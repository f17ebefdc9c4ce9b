// Path form: a path as a person, a settings file or the environment gives it, brought to
// one form. Both systems' forms are pure text and can be had on either.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tavlo {

/// The value of an environment variable; empty when it is not set.
using Environment = std::function<std::string(const std::string&)>;

/// "/" and doubled "\" become "\", %NAME% its value, quotes and a "\" at the end go; a path
/// without a drive is put behind HOMEDRIVE. "C:\" becomes "C:": the caller joins with "\".
/// An unknown %NAME% stays, and a value that was put in is not looked through again.
std::string NormalFormWindows(std::string_view path, const Environment& environment);

/// The same with "/", $NAME, ${NAME}, %NAME% and "~" in front; a relative path is put
/// behind HOME, and without one is none. The root keeps its "/".
std::string NormalFormPosix(std::string_view path, const Environment& environment);

}  // namespace tavlo
