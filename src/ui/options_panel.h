#pragma once
// The options tab: the groups of boxes, the sounds, the finds, the colours, and the label that
// explains them.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <initializer_list>

#include "settings/options_page.h"

class QBoxLayout;
class QGroupBox;
class QVBoxLayout;

namespace brindle {

class OptionsPanel : public QWidget, public OptionsPageView {
  Q_OBJECT

 public:
  explicit OptionsPanel(QWidget* parent = nullptr);

  void Attach(OptionsPage& page, const Options& options);

  // Puts all options into their controls. Boxes and colours take effect as if clicked.
  void ShowAll();

  // The paragraph of help in lblQuickHelp.
  void SetQuickHelp(const QString& text);

  void EnableRequestAccessCode(bool enabled) override;
  void EnableFindDays(bool enabled) override;
  void SetTopmost(bool topmost) override { emit TopmostChanged(topmost); }
  void ShowRoomOnListTab(bool shown) override { emit RoomOnListTabChanged(shown); }
  void SetSoundPath(SoundSlot slot, const std::string& path) override;
  void ShowTheme() override;
  void ShowColour(ColourSlot slot, Colour colour) override;

 signals:
  // What options change in the window around.
  void TopmostChanged(bool topmost);
  void RoomOnListTabChanged(bool shown);
  void ColoursChanged(const Options& options);

 protected:
  // Two columns side by side where there is room for both, else one below the other.
  void resizeEvent(QResizeEvent* event) override;

 private:
  // A group of boxes, shown in the order of `indexes`.
  QGroupBox* BuildGroup(const char* title, const char* control, const OptionGroup& group,
                        std::initializer_list<size_t> indexes);
  QGroupBox* BuildSounds();
  QGroupBox* BuildFinds();
  QGroupBox* BuildColours();
  QGroupBox* BuildTheme();
  QCheckBox* Box(const OptionGroup& group, size_t index) const;
  void ShowGroup(const OptionGroup& group);
  void ShowSounds();

  QBoxLayout* columns_ = nullptr;
  std::array<QLineEdit*, kSoundSlots> soundPaths_{};
  std::array<QCheckBox*, kSoundSlots> soundBoxes_{};
  std::array<QPushButton*, 4> swatches_{};
  QComboBox* cmbOptionsFinds_ = nullptr;
  QComboBox* cmbOptionsTheme_ = nullptr;
  QLabel* lblQuickHelp_ = nullptr;
  OptionsPage* page_ = nullptr;
  const Options* options_ = nullptr;
};

}  // namespace brindle
