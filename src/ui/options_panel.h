#pragma once
// The options tab: the five groups of boxes, the sounds, the finds, the colours, and the label that
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

class OptionsPanel : public QWidget {
  Q_OBJECT

 public:
  explicit OptionsPanel(QWidget* parent = nullptr);

  void Attach(OptionsPage& page);

  // Puts the options into the controls of one part. Boxes take effect as if clicked.
  void ShowGroup(const OptionGroup& group, const Options& options);
  void ShowSounds(const Options& options);
  void ShowFindDays(const Options& options);

  void EnableRequestAccessCode(bool enabled);
  void EnableFindDays(bool enabled);
  void SetSoundPath(SoundSlot slot, const QString& path);
  void SetSwatch(ColourSlot slot, Colour colour);
  // The paragraph of help in lblQuickHelp.
  void SetQuickHelp(const QString& text);

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
  QCheckBox* Box(const OptionGroup& group, size_t index) const;

  QBoxLayout* columns_ = nullptr;
  std::array<QLineEdit*, kSoundSlots> soundPaths_{};
  std::array<QCheckBox*, kSoundSlots> soundBoxes_{};
  std::array<QPushButton*, 4> swatches_{};
  QComboBox* cmbOptionsFinds_ = nullptr;
  QLabel* lblQuickHelp_ = nullptr;
  OptionsPage* page_ = nullptr;
};

}  // namespace brindle
