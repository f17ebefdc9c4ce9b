// Drawable text: words of a drawing as Qt's picture writers can take them. A file
// name may hold any byte; an SVG with a control character is no XML and opens in
// no program.
#pragma once

#include <QString>
#include <string>

namespace tavlo {

/// `utf8` with a blank for each character that XML 1.0 doesn't allow.
QString drawable_text(const std::string& utf8);

/// The same for the name of a font, which Qt's SVG writer puts between quotation
/// marks as it is: marks of XML become blanks too.
QString drawable_face(const std::string& utf8);

}  // namespace tavlo
