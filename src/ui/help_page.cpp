#include "ui/help_page.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFile>
#include <QScrollBar>

#include "settings/product.h"
#include "ui/qt_text.h"

// The page lies in a static library, which must name it to have it linked.
static void KeepHelpPage() { Q_INIT_RESOURCE(help_page); }

namespace brindle {
namespace {

constexpr char kPage[] = ":/help/help.html";
constexpr char kWebLink[] = "web";

}  // namespace

HelpPage::HelpPage(QWidget* parent) : QTextBrowser(parent) {
  KeepHelpPage();
  setObjectName("webHelp");
  setAccessibleName("Help");
  setOpenLinks(false);
  setUndoRedoEnabled(false);
  SetWebAddress(kWebAddress);
  open_ = [](const QUrl& address) { QDesktopServices::openUrl(address); };
  connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::Follow);
}

void HelpPage::Load() {
  QFile page(kPage);
  if (page.open(QIODevice::ReadOnly)) setHtml(QString::fromUtf8(page.readAll()));
}

// Laid out when somebody looks, which most starts never come to.
void HelpPage::showEvent(QShowEvent* event) {
  if (document()->isEmpty()) Load();
  QTextBrowser::showEvent(event);
}

void HelpPage::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  // The links have taken their colour from the theme in which the page was read.
  if (event->type() == QEvent::PaletteChange && !document()->isEmpty()) {
    const int place = verticalScrollBar()->value();
    Load();
    verticalScrollBar()->setValue(place);
  }
}

void HelpPage::SetWebAddress(const std::string& address) {
  webAddress_ = QUrl(ToQString(address), QUrl::StrictMode);
}

void HelpPage::Follow(const QUrl& link) {
  if (link.isRelative() && link.hasFragment()) {
    scrollToAnchor(link.fragment());
    return;
  }
  const bool isWeb = webAddress_.scheme() == "http" || webAddress_.scheme() == "https";
  if (link == QUrl(kWebLink) && isWeb) open_(webAddress_);
}

}  // namespace brindle
