#include "ui/options_panel.h"

#include <QEvent>
#include <QGroupBox>
#include <QListWidget>
#include <QSignalBlocker>
#include <QSpinBox>

#include "ui/connection_options_box.h"
#include "ui/look.h"
#include "ui/qt_text.h"
#include "ui/readable_colour.h"

namespace brindle {
namespace {

const OptionGroup* const kGroups[] = {&kMiscOptions,      &kListOptions, &kRoomOptions,
                                      &kFindOptions,      &kChatOptions, &kThemeOptions,
                                      &kConnectionOptions};

bool IsText(ColourSlot slot) {
  return slot == ColourSlot::kListForecolor || slot == ColourSlot::kRoomForecolor;
}

bool IsList(ColourSlot slot) {
  return slot == ColourSlot::kListForecolor || slot == ColourSlot::kListBackcolor;
}

}  // namespace

void OptionsPanel::Attach(OptionsPage& page, const Options& options) {
  page_ = &page;
  options_ = &options;
}

void OptionsPanel::ShowAll() {
  for (const OptionGroup* group : kGroups) {
    for (size_t i = 0; i < group->boxes.size(); ++i) {
      page_->BoxClicked(*group, i, options_->*(group->boxes[i].state));
    }
  }
  ShowTheme();
  KeepChatLines(options_->chatLines);
  if (IsBuilt()) Fill();
}

void OptionsPanel::Fill() {
  for (const OptionGroup* group : kGroups) {
    for (size_t i = 0; i < group->boxes.size(); ++i) {
      QCheckBox* box = Box(*group, i);
      const QSignalBlocker quiet(box);
      box->setChecked(options_->*(group->boxes[i].state));
    }
  }
  for (size_t i = 0; i < kSoundSlots; ++i) {
    const QSignalBlocker quietBox(sounds_[i].box);
    const QSignalBlocker quietPath(sounds_[i].path);
    sounds_[i].box->setChecked(options_->sounds[i].on);
    sounds_[i].path->setText(ToQString(options_->sounds[i].path));
  }
  const QSignalBlocker quietDays(cmbOptionsFinds_);
  const QSignalBlocker quietTheme(cmbOptionsTheme_);
  const QSignalBlocker quietLines(spnOptionsLines_);
  cmbOptionsFinds_->setCurrentIndex(options_->findDaysIndex);
  cmbOptionsTheme_->setCurrentIndex(static_cast<int>(options_->theme));
  spnOptionsLines_->setValue(options_->chatLines);
  connectionBox_->Show(options_->connection);
  EnableRequestAccessCode(options_->scanChatForServers);
  EnableFindDays(options_->removeInactiveFinds);
  for (size_t i = 0; i < swatches_.size(); ++i) ShowSwatch(static_cast<ColourSlot>(i));
  ShowSamples();
}

void OptionsPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (IsBuilt()) return;
  Build();
  if (options_ != nullptr) Fill();
}

void OptionsPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && IsBuilt() && options_ != nullptr) ShowSamples();
}

void OptionsPanel::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (IsBuilt()) PlaceSounds();
}

void OptionsPanel::EnableRequestAccessCode(bool enabled) {
  constexpr size_t kRequestAccessCode = 3;
  if (IsBuilt()) Box(kMiscOptions, kRequestAccessCode)->setEnabled(enabled);
}

void OptionsPanel::EnableFindDays(bool enabled) {
  if (IsBuilt()) cmbOptionsFinds_->setEnabled(enabled);
}

void OptionsPanel::SetSoundPath(SoundSlot slot, const std::string& path) {
  if (IsBuilt()) sounds_[static_cast<size_t>(slot)].path->setText(ToQString(path));
}

void OptionsPanel::ShowConnection(const ConnectionOptions& choices) {
  if (IsBuilt()) connectionBox_->Show(choices);
}

void OptionsPanel::ShowTheme() {
  SetTheme(options_->theme);
  emit ColoursChanged(*options_);
  if (IsBuilt()) ShowSamples();
}

void OptionsPanel::ShowColour(ColourSlot slot, Colour) {
  emit ColoursChanged(*options_);
  if (!IsBuilt()) return;
  ShowSwatch(slot);
  ShowSamples();
}

void OptionsPanel::ShowSwatch(ColourSlot slot) {
  QPushButton* swatch = swatches_[static_cast<size_t>(slot)];
  const std::optional<Colour> picked = PickedColour(*options_, slot);
  const char* name = IsList(slot) ? (IsText(slot) ? "List Forecolor" : "List Backcolor")
                                  : (IsText(slot) ? "Room Forecolor" : "Room Backcolor");
  swatch->setAccessibleName(
      QString("%1: %2").arg(name, picked ? ToQColor(*picked).name() : "as the theme has it"));
  swatch->setIcon(picked ? SwatchIcon(ToQColor(*picked))
                         : SwatchIcon(IsText(slot) ? &LookColours::text : &LookColours::base));
}

void OptionsPanel::ShowSamples() {
  const auto colour = [this](ColourSlot slot) {
    const std::optional<Colour> picked = PickedColour(*options_, slot);
    if (picked) return ToQColor(*picked);
    return IsText(slot) ? CurrentColours().text : CurrentColours().base;
  };
  const QColor listText = colour(ColourSlot::kListForecolor);
  listSample_->Show({"1  Golden Chess Puzzles", listText}, {"2  Simple Photo Album", listText},
                    colour(ColourSlot::kListBackcolor));
  const QColor back = colour(ColourSlot::kRoomBackcolor);
  const auto said = [&](const QColor& text) {
    if (!options_->readableChatColours) return text;
    return ToQColor(ReadableOn(FromQColor(text), FromQColor(back)));
  };
  roomSample_->Show({"Text in a colour of its own", said(CurrentColours().link)},
                    {"Text in the colour of the window", said(colour(ColourSlot::kRoomForecolor))},
                    back);
}

void OptionsPanel::SetQuickHelp(const QString& text) {
  if (IsBuilt()) lblQuickHelp_->setText(text);
}

}  // namespace brindle
