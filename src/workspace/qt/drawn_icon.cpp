#include "workspace/qt/drawn_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace tavlo {

namespace {

struct Ink {
  QString strokes;
  QString accents;
};

Ink ink_of(QIcon::Mode mode) {
  const QPalette palette = QGuiApplication::palette();
  const auto name = [&palette](QPalette::ColorGroup group, QPalette::ColorRole role) {
    return palette.color(group, role).name();
  };
  const auto both = [](const QString& colour) { return Ink{colour, colour}; };
  if (mode == QIcon::Disabled) return both(name(QPalette::Disabled, QPalette::WindowText));
  if (mode == QIcon::Selected) return both(name(QPalette::Active, QPalette::HighlightedText));
  return {name(QPalette::Active, QPalette::WindowText),
          name(QPalette::Active, QPalette::Highlight)};
}

class DrawnIcon : public QIconEngine {
 public:
  DrawnIcon(QString key, QByteArray svg, QString theme_name)
      : key_(std::move(key)), svg_(std::move(svg)), theme_name_(std::move(theme_name)) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
    const qreal scale = painter->device()->devicePixelRatio();
    QPixmap picture = pixmap((QSizeF(place.size()) * scale).toSize(), mode, state);
    picture.setDevicePixelRatio(scale);
    painter->drawPixmap(place, picture);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    if (const QIcon& own = of_theme(); !own.isNull()) return own.pixmap(size, 1.0, mode, state);
    const Ink ink = ink_of(mode);
    const QString cached = QStringLiteral("%1 %2x%3 %4 %5")
                               .arg(key_)
                               .arg(size.width())
                               .arg(size.height())
                               .arg(ink.strokes, ink.accents);
    QPixmap picture;
    if (QPixmapCache::find(cached, &picture)) return picture;
    picture = drawn(size, ink);
    QPixmapCache::insert(cached, picture);
    return picture;
  }

  QIconEngine* clone() const override { return new DrawnIcon(*this); }

 private:
  /// The fallback theme has no icons of commands.
  const QIcon& of_theme() {
    const QString theme = QIcon::themeName();
    if (theme != theme_) {
      theme_ = theme;
      const bool may_have = !theme_name_.isEmpty() && theme != u"hicolor";
      of_theme_ = may_have ? QIcon::fromTheme(theme_name_) : QIcon();
    }
    return of_theme_;
  }

  QPixmap drawn(const QSize& size, const Ink& ink) const {
    QByteArray svg = svg_;
    svg.replace("currentColor", ink.strokes.toLatin1());
    svg.replace("accentColor", ink.accents.toLatin1());
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(svg).render(&painter);
    return picture;
  }

  QString key_;
  QByteArray svg_;
  QString theme_name_;
  QString theme_;  ///< that was looked through
  QIcon of_theme_;
};

}  // namespace

QIcon drawn_icon(const QString& key, const QByteArray& svg, const QString& theme_name) {
  return QIcon(new DrawnIcon(key, svg, theme_name));
}

}  // namespace tavlo
