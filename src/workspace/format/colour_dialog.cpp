#include "workspace/format/colour_dialog.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "project/palette.h"
#include "workspace/format/format_pictures.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int palette_columns = 5;
constexpr int widest_pen = 500;  // logical units, a twentieth of the chart
constexpr QSize patch(24, 24);
constexpr QSize style_picture(90, 16);
constexpr QSize preview_picture(240, 48);

constexpr std::array<const char*, 7> style_names = {
    "solid", "dashes", "dots", "dash and dot", "dash and two dots", "no line", "solid, inside"};

/// Dashes and dots are drawn as thin as the screen or the printer can.
bool has_width(int style) { return style == pen_style::solid || style == pen_style::inside_frame; }

int palette_slot(std::int32_t colour) {
  const auto found = std::find(gColors.begin() + 1, gColors.end(), colour);
  return found == gColors.end() ? 0 : static_cast<int>(found - gColors.begin());
}

}  // namespace

void ColourDialog::choose(QWidget* parent, UserCommands& commands, const PenLook& look, Asks asks,
                          const std::function<void(const PenLook&)>& chosen) {
  auto* dialog = new ColourDialog(parent, commands, look, asks);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, dialog,
          commands.slot([dialog, chosen] { chosen(dialog->look_); }));
  dialog->open();
}

ColourDialog::ColourDialog(QWidget* parent, UserCommands& commands, const PenLook& look, Asks asks)
    : QDialog(parent),
      commands_(commands),
      look_(look),
      asks_(asks),
      palette_(palette_columns, patch),
      styles_(1, style_picture) {
  setObjectName(QStringLiteral("frm_Colour"));
  setWindowTitle(asks == Asks::pen ? tr("Colour and Line Style") : tr("Colour"));
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(make_colours());
  if (asks == Asks::pen) rows->addWidget(make_pen());
  rows->addWidget(make_preview());
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  show_look();
}

QWidget* ColourDialog::make_colours() {
  auto* group = new QGroupBox(tr("Colour"));
  palette_.setObjectName(QStringLiteral("opt_Colour"));
  for (int slot = 1; slot < static_cast<int>(gColors.size()); ++slot) {
    const std::int32_t colour = gColors[static_cast<std::size_t>(slot)];
    palette_.add(slot, colour_picture(colour, patch),
                 tr("Colour %1, %2").arg(slot).arg(to_qt_colour(colour).name()));
  }
  connect(&palette_, &PictureChoice::chosen, this, [this](int slot) {
    commands_.run([&] {
      look_.colour = gColors.at(static_cast<std::size_t>(slot));
      show_look();
    });
  });
  auto* custom = new QPushButton(tr("C&ustom..."));
  custom->setObjectName(QStringLiteral("cmd_Custom"));
  custom->setAutoDefault(false);
  connect(custom, &QPushButton::clicked, this, commands_.slot([this] { choose_custom(); }));
  auto* columns = new QHBoxLayout(group);
  columns->addWidget(&palette_);
  columns->addWidget(custom, 0, Qt::AlignTop);
  return group;
}

QWidget* ColourDialog::make_pen() {
  auto* group = new QGroupBox(tr("Line"));
  styles_.setObjectName(QStringLiteral("opt_Style"));
  styles_.show_names();
  for (int style = 0; style < static_cast<int>(style_names.size()); ++style)
    styles_.add(style, pen_picture({0, style, 20}, style_picture),
                tr(style_names[static_cast<std::size_t>(style)]));
  connect(&styles_, &PictureChoice::chosen, this, [this](int style) {
    commands_.run([&] {
      look_.style = style;
      show_look();
    });
  });
  width_.setObjectName(QStringLiteral("txt_PenWidth"));
  width_.setRange(0, widest_pen);
  connect(&width_, &QSpinBox::valueChanged, this, [this](int width) {
    commands_.run([&] {
      look_.width = width;
      show_look();
    });
  });
  auto* rows = new QFormLayout(group);
  rows->addRow(tr("&Style"), &styles_);
  rows->addRow(tr("&Width"), &width_);
  return group;
}

QWidget* ColourDialog::make_preview() {
  preview_.setObjectName(QStringLiteral("lbl_Preview"));
  preview_.setAlignment(Qt::AlignCenter);
  preview_.setFrameShape(QFrame::StyledPanel);
  preview_.setBackgroundRole(QPalette::Base);
  preview_.setAutoFillBackground(true);
  preview_.setMinimumHeight(preview_picture.height() + 8);
  return &preview_;
}

void ColourDialog::choose_custom() {
  const QColor chosen = QColorDialog::getColor(to_qt_colour(look_.colour), this);
  if (!chosen.isValid()) return;
  look_.colour = from_qt_colour(chosen);
  show_look();
}

void ColourDialog::show_look() {
  palette_.set_value(palette_slot(look_.colour));
  styles_.set_value(look_.style);
  const QSignalBlocker silent(width_);
  // A width beyond the box's own range stays what it is until another is typed.
  width_.setValue(look_.width);
  width_.setEnabled(has_width(look_.style));
  const QIcon picture = asks_ == Asks::pen ? pen_picture(look_, preview_picture)
                                           : colour_picture(look_.colour, preview_picture);
  preview_.setPixmap(picture.pixmap(preview_picture));
}

}  // namespace tavlo
