#include "ui/help_page.h"

#include <QDesktopServices>
#include <QFile>

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
  QFile page(kPage);
  if (page.open(QIODevice::ReadOnly)) setHtml(QString::fromUtf8(page.readAll()));
  connect(this, &QTextBrowser::anchorClicked, this, &HelpPage::Follow);
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
