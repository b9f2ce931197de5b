#pragma once
// The options tab: pages of boxes, sounds, finds and colours, and the card that explains them. Its
// controls are made when it is first shown; what is stored takes effect before.

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <initializer_list>

#include "base/secret_store.h"
#include "settings/options_page.h"
#include "ui/icons.h"
#include "ui/option_widgets.h"

class QBoxLayout;
class QGridLayout;
class QGroupBox;
class QListWidget;
class QSpinBox;
class QStackedWidget;

namespace brindle {

class ConnectionOptionsBox;

class OptionsPanel : public QWidget, public OptionsPageView {
  Q_OBJECT

 public:
  explicit OptionsPanel(QWidget* parent = nullptr) : QWidget(parent) {}

  void Attach(OptionsPage& page, const Options& options);

  // All options take effect as if clicked, and are shown by the controls that are there.
  void ShowAll();

  // The paragraph of help in lblQuickHelp.
  void SetQuickHelp(const QString& text);

  void EnableRequestAccessCode(bool enabled) override;
  void EnableFindDays(bool enabled) override;
  void SetTopmost(bool topmost) override { emit TopmostChanged(topmost); }
  void ShowRoomOnListTab(bool shown) override { emit RoomOnListTabChanged(shown); }
  void SetSoundPath(SoundSlot slot, const std::string& path) override;
  void ShowConnection(const ConnectionOptions& choices) override;
  void ShowOptionsHint(const std::string& text) override { emit Hint(text); }
  void ShowTheme() override;
  void KeepChatLines(int lines) override { emit ChatLinesChanged(lines); }
  void ShowColour(ColourSlot slot, Colour colour) override;

 signals:
  // What options change in the window around.
  void TopmostChanged(bool topmost);
  void RoomOnListTabChanged(bool shown);
  void ColoursChanged(const Options& options);
  void ChatLinesChanged(int lines);
  void Hint(const std::string& text);
  // To be kept by the system.
  void SecretTyped(Secret which, const QString& text);

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  // A narrow page has two lines for each sound.
  void resizeEvent(QResizeEvent* event) override;

 private:
  bool IsBuilt() const { return pages_ != nullptr; }
  void Build();
  // Adds a page that shows its groups one below the other.
  void AddPage(const char* title, IconName icon, std::initializer_list<QWidget*> groups);
  // A group of boxes, shown in the order of `indexes`. `keys` are their letters, by index.
  QGroupBox* BuildGroup(const char* title, const OptionGroup& group, const char* keys,
                        std::initializer_list<size_t> indexes);
  QGroupBox* BuildSounds();
  void BuildSound(QWidget& parent, size_t index, char key);
  void PlaceSounds();
  QGroupBox* BuildChat();
  QGroupBox* BuildFinds();
  QGroupBox* BuildColours();
  QGroupBox* BuildTheme();
  QCheckBox* Box(const OptionGroup& group, size_t index) const;
  void Fill();
  void ShowSwatch(ColourSlot slot);
  void ShowSamples();

  struct SoundRow {
    QCheckBox* box;
    QLineEdit* path;
    QPushButton* open;
    QPushButton* play;
  };

  QListWidget* pageList_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  QGridLayout* soundGrid_ = nullptr;
  std::array<SoundRow, kSoundSlots> sounds_{};
  std::array<QPushButton*, 4> swatches_{};
  ColourSample* listSample_ = nullptr;
  ColourSample* roomSample_ = nullptr;
  QComboBox* cmbOptionsFinds_ = nullptr;
  QComboBox* cmbOptionsTheme_ = nullptr;
  QSpinBox* spnOptionsLines_ = nullptr;
  ConnectionOptionsBox* connectionBox_ = nullptr;
  QuickHelpCard* lblQuickHelp_ = nullptr;
  OptionsPage* page_ = nullptr;
  const Options* options_ = nullptr;
};

}  // namespace brindle
