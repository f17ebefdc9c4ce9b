#include "workspace/format/format_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <algorithm>

#include "files/profiles.h"
#include "workspace/format/format_axis_page.h"
#include "workspace/format/format_box_pages.h"
#include "workspace/format/format_data_page.h"
#include "workspace/format/format_profile_page.h"
#include "workspace/format/format_text_pages.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int preview_delay = 30;  // ms: several changes at once are composed once
constexpr QSize usual_size(1180, 590);
constexpr double most_of_screen = 0.94;

}  // namespace

void FormatDialog::run(Session& session, UserCommands& commands, int chart_index, ChartPart part,
                       QWidget* parent) {
  auto* dialog = new FormatDialog(session, commands, chart_index, parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->list_.setCurrentRow(static_cast<int>(part));
  dialog->open();
}

FormatDialog::FormatDialog(Session& session, UserCommands& commands, int chart_index,
                           QWidget* parent)
    : QDialog(parent), draft_(session, commands, chart_index), preview_(draft_) {
  setObjectName(QStringLiteral("frm_Format"));
  setWindowTitle(tr("Chart Format"));
  add_pages();
  add_page_keys();
  lay_out();
  recompose_.setSingleShot(true);
  recompose_.setInterval(preview_delay);
  connect(&recompose_, &QTimer::timeout, this, commands.slot([this] { show_preview(); }));
  connect(&draft_, &FormatDraft::edited, &recompose_, qOverload<>(&QTimer::start));
  connect(&draft_, &FormatDraft::replaced, this, &FormatDialog::show_all);
  show_all();
}

// The first ones in the order of ChartPart.
void FormatDialog::add_pages() {
  add_page(tr("Chart and plot"), new BoxesPage(draft_));
  add_page(tr("Titles"), new TitlesPage(draft_));
  add_page(tr("X axis"), new AxisPage(draft_, 0));
  add_page(tr("Y axis"), new AxisPage(draft_, 1));
  add_page(tr("Data and lines"), new DataPage(draft_));
  add_page(tr("Parameters, legend"), new InsetsPage(draft_));
  add_page(tr("File name, date"), new NotesPage(draft_));
  auto* profile = new ProfilePage(draft_);
  connect(profile, &ProfilePage::save_wanted, this, &FormatDialog::cmd_Save);
  add_page(tr("Profile"), profile);
}

void FormatDialog::add_page(const QString& title, FormatPage* page) {
  auto* scroller = new QScrollArea;
  scroller->setFrameShape(QFrame::NoFrame);
  scroller->setFocusPolicy(Qt::NoFocus);
  scroller->setWidgetResizable(true);
  scroller->setWidget(page);
  pages_.push_back(page);
  list_.addItem(title);
  stack_.addWidget(scroller);
}

void FormatDialog::add_page_keys() {
  const auto add = [this](const QKeySequence& keys, int step) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this,
            draft_.commands().slot([this, step] { turn_page(step); }));
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
  add(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
}

void FormatDialog::turn_page(int step) {
  list_.setCurrentRow((list_.currentRow() + step + list_.count()) % list_.count());
}

void FormatDialog::lay_out() {
  list_.setObjectName(QStringLiteral("lst_Page"));
  list_.setAccessibleName(tr("Pages"));
  list_.setSpacing(2);
  list_.setFixedWidth(list_.sizeHintForColumn(0) + 2 * list_.fontMetrics().height());
  connect(&list_, &QListWidget::currentRowChanged, &stack_, &QStackedWidget::setCurrentIndex);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  stack_.setMinimumWidth(page_width());
  auto* grid = new QGridLayout(this);
  grid->addWidget(&list_, 0, 0);
  grid->addWidget(&stack_, 0, 1);
  grid->addWidget(&preview_, 0, 2);
  grid->addWidget(buttons, 1, 0, 1, 3);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 4);
  resize(usual_size.boundedTo(screen()->availableSize() * most_of_screen));
}

/// So wide that no page needs a level scroll bar, where the screen has the room.
int FormatDialog::page_width() const {
  constexpr double most = 0.5;
  int width = 0;
  for (const FormatPage* page : pages_) width = std::max(width, page->minimumSizeHint().width());
  width += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  return std::min(width, static_cast<int>(most * screen()->availableSize().width()));
}

void FormatDialog::show_all() {
  for (FormatPage* page : pages_) page->show_chart();
  preview_.update();
}

void FormatDialog::show_preview() {
  draft_.compose();
  for (FormatPage* page : pages_) page->composed();
  preview_.update();
}

/// True when every field can be taken; else says so and leads to the first that can't.
bool FormatDialog::has_valid_pages() {
  const auto refuse = [this] {
    draft_.session().ports.prompts.show({"Chart Format",
                                         "Please Check for invalid data.  Then try again.",
                                         BoxIcon::exclamation, BoxButtons::ok});
    return false;
  };
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    QWidget* field = pages_[i]->invalid_field();
    if (!field) continue;
    list_.setCurrentRow(static_cast<int>(i));
    field->setFocus();
    return refuse();
  }
  return has_valid_looks(draft_.chart()) || refuse();
}

void FormatDialog::cmd_Save() {
  if (has_valid_pages()) save_profile(draft_.session(), draft_.chart());
}

void FormatDialog::accept() {
  draft_.commands().run([this] {
    if (!has_valid_pages()) return;
    draft_.keep();
    QDialog::accept();
  });
}

void FormatDialog::reject() {
  draft_.commands().run([this] {
    draft_.drop();
    QDialog::reject();
  });
}

}  // namespace tavlo
