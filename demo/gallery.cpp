#include "gallery.h"

#include <QApplication>
#include <QListWidget>
#include <QTabWidget>

#include "ui/look.h"

namespace brindle::demo {
namespace {

constexpr QSize kSizes[] = {{800, 600}, {1280, 800}};

struct Theme {
  ThemeChoice choice;
  const char* name;
};
constexpr Theme kThemes[] = {{ThemeChoice::kDark, "dark"}, {ThemeChoice::kLight, "light"}};

void Save(QWidget& widget, const QDir& folder, const QString& name) {
  // Until everything is laid out.
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
  QString file = name.toLower();
  file.remove(' ').replace('/', '-').remove('&');
  widget.grab().save(folder.filePath(file + ".png"));
}

void PhotographTabs(test::WindowDriver& window, const QDir& folder, const QString& prefix) {
  FrmMain& main = window.App().Window();
  const auto& tabs = window.Find<QTabWidget>("tabMain");
  for (int tab = 0; tab < tabs.count(); ++tab) {
    window.ShowTab(static_cast<Tab>(tab));
    const QString name = prefix + tabs.tabText(tab);
    if (static_cast<Tab>(tab) != Tab::kOptions) {
      Save(main, folder, name);
      continue;
    }
    auto& pages = window.Find<QListWidget>("lstOptionPages");
    for (int page = 0; page < pages.count(); ++page) {
      pages.setCurrentRow(page);
      Save(main, folder, name + "-" + pages.item(page)->text());
    }
  }
}

void OpenWindows(test::WindowDriver& window) {
  window.ShowTab(Tab::kList);
  window.Click("cmdFind");
  window.Click("cmdManualRequest");
  window.ShowTab(Tab::kConnection);
  window.Click("cmdCheckForUpdate");
}

}  // namespace

void PhotographEverything(test::WindowDriver& window, const QDir& folder) {
  FrmMain& main = window.App().Window();
  for (const Theme& theme : kThemes) {
    SetTheme(theme.choice);
    for (const QSize& size : kSizes) {
      main.resize(size);
      PhotographTabs(window, folder,
                     QString("%1-%2x%3-").arg(theme.name).arg(size.width()).arg(size.height()));
    }
  }
  OpenWindows(window);
  for (const char* name : {"frmResults", "frmManualRequest", "frmUpdater"}) {
    auto& other = window.Find<QWidget>(name);
    for (const Theme& theme : kThemes) {
      SetTheme(theme.choice);
      Save(other, folder, QString("%1-%2").arg(theme.name, name));
    }
  }
}

}  // namespace brindle::demo
