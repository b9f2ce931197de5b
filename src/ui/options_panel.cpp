#include "ui/options_panel.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/icons.h"
#include "ui/look.h"
#include "ui/qt_text.h"

namespace brindle {
namespace {

struct Swatch {
  ColourSlot slot;
  const char* button;
  const char* label;
  const char* text;
};

constexpr Swatch kSwatches[] = {
    {ColourSlot::kListForecolor, "picListForecolor", "lblListForecolor", "List Forecolor"},
    {ColourSlot::kListBackcolor, "picListBackcolor", "lblListBackcolor", "List Backcolor"},
    {ColourSlot::kRoomForecolor, "picRoomForecolor", "lblRoomForecolor", "Room Forecolor"},
    {ColourSlot::kRoomBackcolor, "picRoomBackcolor", "lblRoomBackcolor", "Room Backcolor"},
};

constexpr int kSwatchWidth = 60;
constexpr int kSwatchHeight = 22;
constexpr int kSwatchEdge = 10;
constexpr int kQuickHelpHeight = 90;

QString Indexed(const char* control, size_t index) {
  return QString("%1_%2").arg(control).arg(index);
}

const char* ControlOf(const OptionGroup& group) {
  if (&group == &kMiscOptions) return "chkOptionsMisc";
  if (&group == &kListOptions) return "chkOptionsList";
  if (&group == &kRoomOptions) return "chkOptionsRoom";
  if (&group == &kThemeOptions) return "chkOptionsTheme";
  return &group == &kFindOptions ? "chkOptionsFind" : "chkOptionsChat";
}

}  // namespace

OptionsPanel::OptionsPanel(QWidget* parent) : QWidget(parent) {
  auto* content = new QWidget;
  columns_ = new QHBoxLayout(content);
  auto* left = new QVBoxLayout;
  left->addWidget(BuildGroup("Misc", "chkOptionsMisc", kMiscOptions, {4, 3, 2, 1, 0}));
  left->addWidget(BuildGroup("List", "chkOptionsList", kListOptions, {1, 0}));
  left->addWidget(BuildGroup("Room", "chkOptionsRoom", kRoomOptions, {1, 0}));
  left->addWidget(BuildFinds());
  left->addStretch();
  auto* right = new QVBoxLayout;
  right->addWidget(BuildSounds());
  right->addWidget(BuildColours());
  right->addWidget(BuildTheme());
  right->addWidget(BuildGroup("Chat", "chkOptionsChat", kChatOptions, {0}));
  right->addStretch();
  columns_->addLayout(left, 1);
  columns_->addLayout(right, 1);

  auto* scroll = new QScrollArea(this);
  scroll->setObjectName("scrollOptions");
  scroll->setWidget(content);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  // The background of the tab shows through, as on the other tabs.
  scroll->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  lblQuickHelp_ = new QLabel(this);
  lblQuickHelp_->setObjectName("lblQuickHelp");
  lblQuickHelp_->setTextFormat(Qt::PlainText);
  lblQuickHelp_->setWordWrap(true);
  lblQuickHelp_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  lblQuickHelp_->setFixedHeight(kQuickHelpHeight);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(scroll, 1);
  rows->addWidget(lblQuickHelp_);
}

void OptionsPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const QMargins inside = columns_->contentsMargins() + layout()->contentsMargins();
  int needed = inside.left() + inside.right() + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  for (int i = 0; i < columns_->count(); ++i) {
    needed += columns_->itemAt(i)->minimumSize().width() + columns_->spacing();
  }
  columns_->setDirection(width() >= needed ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

QGroupBox* OptionsPanel::BuildGroup(const char* title, const char* control,
                                    const OptionGroup& group,
                                    std::initializer_list<size_t> indexes) {
  auto* frame = new QGroupBox(title);
  auto* rows = new QVBoxLayout(frame);
  for (size_t index : indexes) {
    auto* box = new QCheckBox(group.boxes[index].caption);
    box->setObjectName(Indexed(control, index));
    connect(box, &QCheckBox::toggled, this, [this, &group, index](bool on) {
      if (page_ != nullptr) page_->BoxClicked(group, index, on);
    });
    rows->addWidget(box);
  }
  return frame;
}

QGroupBox* OptionsPanel::BuildSounds() {
  auto* frame = new QGroupBox("Sounds");
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (size_t index : {5, 6, 4, 3, 2, 1, 0}) {
    const auto slot = static_cast<SoundSlot>(index);
    auto* box = new QCheckBox(kSoundCaptions[index]);
    box->setObjectName(Indexed("chkOptionsSound", index));
    auto* path = new QLineEdit;
    path->setObjectName(Indexed("txtOptionsSound", index));
    path->setAccessibleName(QString("Wave file: ") + kSoundCaptions[index]);
    auto* open = new QPushButton("Open...");
    open->setObjectName(Indexed("cmdSoundOpen", index));
    auto* play = new QPushButton("Test");
    play->setObjectName(Indexed("cmdSoundPlay", index));
    connect(box, &QCheckBox::toggled, this,
            [this, slot](bool on) { page_->chkOptionsSound_Click(slot, on); });
    connect(path, &QLineEdit::textChanged, this, [this, slot](const QString& text) {
      page_->txtOptionsSound_Change(slot, text.toStdString());
    });
    connect(open, &QPushButton::clicked, this, [this, slot] { page_->cmdSoundOpen_Click(slot); });
    connect(play, &QPushButton::clicked, this, [this, slot] { page_->cmdSoundPlay_Click(slot); });
    grid->addWidget(box, row, 0, 1, 3);
    grid->addWidget(path, row + 1, 0);
    grid->addWidget(open, row + 1, 1);
    grid->addWidget(play, row + 1, 2);
    row += 2;
    soundBoxes_[index] = box;
    soundPaths_[index] = path;
  }
  return frame;
}

QGroupBox* OptionsPanel::BuildFinds() {
  QGroupBox* frame = BuildGroup("Finds", "chkOptionsFind", kFindOptions, {1, 0});
  auto* rows = static_cast<QVBoxLayout*>(frame->layout());
  cmbOptionsFinds_ = new QComboBox;
  cmbOptionsFinds_->setObjectName("cmbOptionsFinds");
  cmbOptionsFinds_->setAccessibleName("Days");
  for (int day = 1; day <= kMostFindDays; ++day) cmbOptionsFinds_->addItem(QString::number(day));
  cmbOptionsFinds_->setEnabled(false);
  connect(cmbOptionsFinds_, &QComboBox::currentIndexChanged, this,
          [this](int index) { page_->cmbOptionsFinds_Click(index); });
  auto* days = new QHBoxLayout;
  days->addSpacing(24);
  days->addWidget(cmbOptionsFinds_);
  days->addWidget(new QLabel("days"));
  days->addStretch();
  rows->insertLayout(1, days);
  auto* clear = new QPushButton("Clear finds now");
  clear->setObjectName("cmdOptionsFinds");
  connect(clear, &QPushButton::clicked, this, [this] { page_->cmdOptionsFinds_Click(); });
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(clear);
  buttons->addStretch();
  rows->addLayout(buttons);
  return frame;
}

QGroupBox* OptionsPanel::BuildColours() {
  auto* frame = new QGroupBox("Colors");
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (const Swatch& swatch : kSwatches) {
    auto* button = new QPushButton;
    button->setObjectName(swatch.button);
    button->setAccessibleName(swatch.text);
    button->setFixedSize(kSwatchWidth, kSwatchHeight);
    button->setIconSize(button->size() - QSize(kSwatchEdge, kSwatchEdge));
    auto* label = new QLabel(swatch.text);
    label->setObjectName(swatch.label);
    connect(button, &QPushButton::clicked, this,
            [this, slot = swatch.slot] { page_->ColourClicked(slot); });
    grid->addWidget(button, row / 2, row % 2 * 2);
    grid->addWidget(label, row / 2, row % 2 * 2 + 1);
    swatches_[static_cast<size_t>(swatch.slot)] = button;
    ++row;
  }
  grid->setColumnStretch(3, 1);
  return frame;
}

QGroupBox* OptionsPanel::BuildTheme() {
  QGroupBox* frame = BuildGroup("Theme", "chkOptionsTheme", kThemeOptions, {0});
  cmbOptionsTheme_ = new QComboBox;
  cmbOptionsTheme_->setObjectName("cmbOptionsTheme");
  cmbOptionsTheme_->setAccessibleName("Theme");
  cmbOptionsTheme_->addItems({"As the system", "Light", "Dark"});  // as ThemeChoice counts
  connect(cmbOptionsTheme_, &QComboBox::currentIndexChanged, this,
          [this](int index) { page_->cmbOptionsTheme_Click(static_cast<ThemeChoice>(index)); });
  auto* row = new QHBoxLayout;
  row->addWidget(cmbOptionsTheme_);
  row->addStretch();
  static_cast<QVBoxLayout*>(frame->layout())->insertLayout(0, row);
  return frame;
}

void OptionsPanel::Attach(OptionsPage& page, const Options& options) {
  page_ = &page;
  options_ = &options;
}

void OptionsPanel::ShowAll() {
  ShowGroup(kMiscOptions);
  ShowSounds();
  ShowGroup(kListOptions);
  ShowGroup(kRoomOptions);
  ShowGroup(kFindOptions);
  ShowGroup(kChatOptions);
  ShowGroup(kThemeOptions);
  cmbOptionsTheme_->setCurrentIndex(static_cast<int>(options_->theme));
  cmbOptionsFinds_->setCurrentIndex(options_->findDaysIndex);
  for (size_t slot = 0; slot < kColourOptions.size(); ++slot) {
    ShowColour(static_cast<ColourSlot>(slot), options_->*kColourOptions[slot].colour);
  }
}

QCheckBox* OptionsPanel::Box(const OptionGroup& group, size_t index) const {
  return findChild<QCheckBox*>(Indexed(ControlOf(group), index));
}

void OptionsPanel::ShowGroup(const OptionGroup& group) {
  for (size_t i = 0; i < group.boxes.size(); ++i) {
    const bool on = options_->*(group.boxes[i].state);
    QCheckBox* box = Box(group, i);
    // A box that already stands so raises no signal, but its effect must hold all the same.
    if (box->isChecked() == on) page_->BoxClicked(group, i, on);
    box->setChecked(on);
  }
}

void OptionsPanel::ShowSounds() {
  // A copy: each control that changes writes its option.
  const std::array<SoundOption, kSoundSlots> sounds = options_->sounds;
  for (size_t i = 0; i < kSoundSlots; ++i) {
    soundBoxes_[i]->setChecked(sounds[i].on);
    soundPaths_[i]->setText(ToQString(sounds[i].path));
  }
}

void OptionsPanel::EnableRequestAccessCode(bool enabled) {
  constexpr size_t kRequestAccessCode = 3;
  Box(kMiscOptions, kRequestAccessCode)->setEnabled(enabled);
}

void OptionsPanel::EnableFindDays(bool enabled) { cmbOptionsFinds_->setEnabled(enabled); }

void OptionsPanel::SetSoundPath(SoundSlot slot, const std::string& path) {
  soundPaths_[static_cast<size_t>(slot)]->setText(ToQString(path));
}

void OptionsPanel::ShowTheme() {
  SetTheme(options_->theme);
  emit ColoursChanged(*options_);
}

void OptionsPanel::ShowColour(ColourSlot slot, Colour) {
  const bool isText = slot == ColourSlot::kListForecolor || slot == ColourSlot::kRoomForecolor;
  const std::optional<Colour> picked = PickedColour(*options_, slot);
  swatches_[static_cast<size_t>(slot)]->setIcon(
      picked ? SwatchIcon(ToQColor(*picked))
             : SwatchIcon(isText ? &LookColours::text : &LookColours::base));
  emit ColoursChanged(*options_);
}

void OptionsPanel::SetQuickHelp(const QString& text) { lblQuickHelp_->setText(text); }

}  // namespace brindle
