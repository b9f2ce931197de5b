// How the options tab is built.

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "ui/connection_options_box.h"
#include "ui/look.h"
#include "ui/mnemonic.h"
#include "ui/options_panel.h"

namespace brindle {
namespace {

struct Swatch {
  ColourSlot slot;
  const char* button;
  const char* label;
  const char* text;
  char key;
};

constexpr Swatch kSwatches[] = {
    {ColourSlot::kListForecolor, "picListForecolor", "lblListForecolor", "List Forecolor", 'f'},
    {ColourSlot::kListBackcolor, "picListBackcolor", "lblListBackcolor", "List Backcolor", 'b'},
    {ColourSlot::kRoomForecolor, "picRoomForecolor", "lblRoomForecolor", "Room Forecolor", 'r'},
    {ColourSlot::kRoomBackcolor, "picRoomBackcolor", "lblRoomBackcolor", "Room Backcolor", 'k'},
};

constexpr int kSwatchWidth = 60;
constexpr int kSwatchHeight = 26;
constexpr int kSwatchEdge = 10;
constexpr int kPageListWidth = 150;
constexpr int kPageEntryHeight = 36;
constexpr int kLeastPathWidth = 120;

QString Indexed(const char* control, size_t index) {
  return QString("%1_%2").arg(control).arg(index);
}

const char* ControlOf(const OptionGroup& group) {
  if (&group == &kMiscOptions) return "chkOptionsMisc";
  if (&group == &kListOptions) return "chkOptionsList";
  if (&group == &kRoomOptions) return "chkOptionsRoom";
  if (&group == &kThemeOptions) return "chkOptionsTheme";
  if (&group == &kConnectionOptions) return "chkOptionsConnection";
  return &group == &kFindOptions ? "chkOptionsFind" : "chkOptionsChat";
}

// A page has nothing beside its group, so no card is drawn around it.
QGroupBox* PlainGroup(const char* title) {
  auto* group = new QGroupBox;
  group->setFlat(true);
  group->setTitle(title);  // which reckons the place of the content
  return group;
}

// A line of controls at the left edge.
QHBoxLayout* LeftLine(std::initializer_list<QWidget*> controls, int indent = 0) {
  auto* line = new QHBoxLayout;
  line->addSpacing(indent);
  for (QWidget* control : controls) line->addWidget(control);
  line->addStretch();
  return line;
}

}  // namespace

void OptionsPanel::Build() {
  pageList_ = new QListWidget;
  pageList_->setObjectName("lstOptionPages");
  pageList_->setAccessibleName("Option pages");
  pageList_->setFrameShape(QFrame::NoFrame);
  pageList_->setFixedWidth(kPageListWidth);
  pageList_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  pageList_->viewport()->setAutoFillBackground(false);
  pages_ = new QStackedWidget;
  // Not the current row: assistive technology selects without moving it.
  connect(pageList_, &QListWidget::itemSelectionChanged, this, [this] {
    const QModelIndexList rows = pageList_->selectionModel()->selectedRows();
    if (!rows.isEmpty()) pages_->setCurrentIndex(rows.first().row());
  });
  lblQuickHelp_ = new QuickHelpCard;
  lblQuickHelp_->setObjectName("lblQuickHelp");

  auto* page = new QVBoxLayout;
  page->setContentsMargins(kWideGap, kGap, kWideGap, kInset);
  page->addWidget(pages_, 1);
  page->addWidget(lblQuickHelp_);
  auto* divider = new QFrame;
  divider->setFrameShape(QFrame::VLine);
  auto* columns = new QHBoxLayout(this);
  columns->setContentsMargins(0, kGap, 0, 0);
  columns->setSpacing(0);
  columns->addWidget(pageList_);
  columns->addWidget(divider);
  columns->addLayout(page, 1);

  AddPage("Misc", IconName::kMisc, {BuildGroup("Misc", kMiscOptions, "nmfrw", {4, 3, 2, 1, 0})});
  AddPage("List", IconName::kList, {BuildGroup("List", kListOptions, "wd", {1, 0})});
  AddPage("Room", IconName::kRoom, {BuildGroup("Room", kRoomOptions, "ny", {1, 0}), BuildChat()});
  AddPage("Finds", IconName::kFind, {BuildFinds()});
  AddPage("Sounds", IconName::kSound, {BuildSounds()});
  AddPage("Colors", IconName::kColours, {BuildColours()});
  AddPage("Theme", IconName::kTheme, {BuildTheme()});
  connectionBox_ = new ConnectionOptionsBox;
  connect(connectionBox_, &ConnectionOptionsBox::Changed, this,
          [this](const ConnectionOptions& choices) { page_->ConnectionChanged(choices); });
  connect(connectionBox_, &ConnectionOptionsBox::SecretTyped, this, &OptionsPanel::SecretTyped);
  connect(connectionBox_, &ConnectionOptionsBox::CertificateWanted, this,
          [this] { page_->cmdOptionsCertificate_Click(); });
  AddPage(
      "Connection", IconName::kPlug,
      {BuildGroup("Connection", kConnectionOptions, "gwmbqp", {0, 1, 2, 3, 4, 5}), connectionBox_});
  pageList_->setCurrentRow(0);
  PlaceSounds();
}

void OptionsPanel::AddPage(const char* title, IconName icon,
                           std::initializer_list<QWidget*> groups) {
  auto* content = new QWidget;
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(kWideGap);
  for (QWidget* group : groups) rows->addWidget(group);
  rows->addStretch();
  auto* scroll = new QScrollArea;
  scroll->setAccessibleName(QString(title) + " options");  // it can have the keyboard
  scroll->setWidget(content);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  // The background of the tab shows through, as on the other tabs.
  scroll->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  pages_->addWidget(scroll);
  auto* entry = new QListWidgetItem(MakeIcon(icon), title, pageList_);
  entry->setSizeHint({0, kPageEntryHeight});
}

QGroupBox* OptionsPanel::BuildGroup(const char* title, const OptionGroup& group, const char* keys,
                                    std::initializer_list<size_t> indexes) {
  auto* frame = PlainGroup(title);
  auto* rows = new QVBoxLayout(frame);
  for (size_t index : indexes) {
    auto* box = new QCheckBox(WithMnemonic(group.boxes[index].caption, keys[index]));
    box->setObjectName(Indexed(ControlOf(group), index));
    connect(box, &QCheckBox::toggled, this,
            [this, &group, index](bool on) { page_->BoxClicked(group, index, on); });
    rows->addWidget(box);
  }
  return frame;
}

QCheckBox* OptionsPanel::Box(const OptionGroup& group, size_t index) const {
  return findChild<QCheckBox*>(Indexed(ControlOf(group), index));
}

QGroupBox* OptionsPanel::BuildSounds() {
  constexpr char kKeys[] = "lprmwnd";  // by slot
  auto* frame = PlainGroup("Sounds");
  soundGrid_ = new QGridLayout(frame);
  for (size_t index : {5, 6, 4, 3, 2, 1, 0}) BuildSound(*frame, index, kKeys[index]);
  return frame;
}

// The parent is given at once, for the order in which the keyboard walks the controls.
void OptionsPanel::BuildSound(QWidget& parent, size_t index, char key) {
  const auto slot = static_cast<SoundSlot>(index);
  const QString caption = kSoundCaptions[index];
  auto* box = new QCheckBox(WithMnemonic(caption, key), &parent);
  box->setObjectName(Indexed("chkOptionsSound", index));
  auto* path = new QLineEdit(&parent);
  path->setObjectName(Indexed("txtOptionsSound", index));
  path->setAccessibleName("Wave file: " + caption);
  path->setPlaceholderText("no sound");
  path->setMinimumWidth(kLeastPathWidth);
  auto* open = new QPushButton("Open...", &parent);
  open->setObjectName(Indexed("cmdSoundOpen", index));
  open->setAccessibleName("Open... (" + caption + ")");
  auto* play = new QPushButton("Test", &parent);
  play->setObjectName(Indexed("cmdSoundPlay", index));
  play->setAccessibleName("Test (" + caption + ")");
  play->setIcon(MakeIcon(IconName::kPlay));
  connect(box, &QCheckBox::toggled, this,
          [this, slot](bool on) { page_->chkOptionsSound_Click(slot, on); });
  connect(path, &QLineEdit::textChanged, this, [this, slot](const QString& text) {
    page_->txtOptionsSound_Change(slot, text.toStdString());
  });
  connect(open, &QPushButton::clicked, this, [this, slot] { page_->cmdSoundOpen_Click(slot); });
  connect(play, &QPushButton::clicked, this, [this, slot] { page_->cmdSoundPlay_Click(slot); });
  sounds_[index] = {box, path, open, play};
}

void OptionsPanel::PlaceSounds() {
  int needed = 0;
  for (const SoundRow& row : sounds_) {
    needed = std::max(needed, row.box->sizeHint().width() + kLeastPathWidth +
                                  row.open->sizeHint().width() + row.play->sizeHint().width());
  }
  const int room = width() - kPageListWidth - 2 * kWideGap - 3 * kGap;
  const bool folded = room < needed;
  int line = 0;
  for (size_t index : {5, 6, 4, 3, 2, 1, 0}) {
    const SoundRow& row = sounds_[index];
    for (QWidget* control : std::initializer_list<QWidget*>{row.box, row.path, row.open, row.play})
      soundGrid_->removeWidget(control);
    soundGrid_->addWidget(row.box, line, 0, 1, folded ? 4 : 1);
    if (folded) ++line;
    soundGrid_->addWidget(row.path, line, 1);
    soundGrid_->addWidget(row.open, line, 2);
    soundGrid_->addWidget(row.play, line, 3);
    ++line;
  }
  soundGrid_->setColumnStretch(1, 1);
}

QGroupBox* OptionsPanel::BuildChat() {
  QGroupBox* frame = BuildGroup("Chat", kChatOptions, "kb", {1, 0});
  spnOptionsLines_ = new QSpinBox;
  spnOptionsLines_->setObjectName("spnOptionsLines");
  spnOptionsLines_->setAccessibleName("Keep at most so many lines");
  spnOptionsLines_->setRange(kFewestChatLines, kMostChatLines);
  spnOptionsLines_->setSingleStep(kFewestChatLines);
  spnOptionsLines_->setGroupSeparatorShown(true);
  // A number that is half typed would drop text.
  spnOptionsLines_->setKeyboardTracking(false);
  connect(spnOptionsLines_, &QSpinBox::valueChanged, this,
          [this](int lines) { page_->spnOptionsLines_Change(lines); });
  auto* label = new QLabel(WithMnemonic("Keep at most", 'm'));
  label->setBuddy(spnOptionsLines_);
  static_cast<QVBoxLayout*>(frame->layout())
      ->addLayout(LeftLine({label, spnOptionsLines_, new QLabel("lines")}));
  return frame;
}

QGroupBox* OptionsPanel::BuildFinds() {
  QGroupBox* frame = BuildGroup("Finds", kFindOptions, "xr", {1, 0});
  auto* rows = static_cast<QVBoxLayout*>(frame->layout());
  cmbOptionsFinds_ = new QComboBox;
  cmbOptionsFinds_->setObjectName("cmbOptionsFinds");
  cmbOptionsFinds_->setAccessibleName("Days");
  for (int day = 1; day <= kMostFindDays; ++day) cmbOptionsFinds_->addItem(QString::number(day));
  connect(cmbOptionsFinds_, &QComboBox::currentIndexChanged, this,
          [this](int index) { page_->cmbOptionsFinds_Click(index); });
  rows->insertLayout(1, LeftLine({cmbOptionsFinds_, new QLabel("days")}, kWideGap + kSmallGap));
  auto* clear = new QPushButton(WithMnemonic("Clear finds now", 'n'));
  clear->setObjectName("cmdOptionsFinds");
  connect(clear, &QPushButton::clicked, this, [this] { page_->cmdOptionsFinds_Click(); });
  rows->addLayout(LeftLine({clear}));
  return frame;
}

QGroupBox* OptionsPanel::BuildColours() {
  auto* frame = PlainGroup("Colors");
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (const Swatch& swatch : kSwatches) {
    auto* button = new QPushButton;
    button->setObjectName(swatch.button);
    button->setFixedSize(kSwatchWidth, kSwatchHeight);
    button->setIconSize(button->size() - QSize(kSwatchEdge, kSwatchEdge));
    auto* label = new QLabel(WithMnemonic(swatch.text, swatch.key));
    label->setObjectName(swatch.label);
    label->setBuddy(button);
    connect(button, &QPushButton::clicked, this,
            [this, slot = swatch.slot] { page_->ColourClicked(slot); });
    grid->addWidget(button, row, 0);
    grid->addWidget(label, row, 1);
    swatches_[static_cast<size_t>(swatch.slot)] = button;
    ++row;
  }
  listSample_ = new ColourSample;
  roomSample_ = new ColourSample;
  grid->addWidget(listSample_, 0, 3, 2, 1);
  grid->addWidget(roomSample_, 2, 3, 2, 1);
  grid->setColumnMinimumWidth(2, kWideGap);
  grid->setColumnStretch(4, 1);
  return frame;
}

QGroupBox* OptionsPanel::BuildTheme() {
  QGroupBox* frame = BuildGroup("Theme", kThemeOptions, "k", {0});
  cmbOptionsTheme_ = new QComboBox;
  cmbOptionsTheme_->setObjectName("cmbOptionsTheme");
  cmbOptionsTheme_->setAccessibleName("Theme");
  cmbOptionsTheme_->addItems({"As the system", "Light", "Dark"});  // as ThemeChoice counts
  connect(cmbOptionsTheme_, &QComboBox::currentIndexChanged, this,
          [this](int index) { page_->cmbOptionsTheme_Click(static_cast<ThemeChoice>(index)); });
  static_cast<QVBoxLayout*>(frame->layout())->insertLayout(0, LeftLine({cmbOptionsTheme_}));
  return frame;
}

}  // namespace brindle
