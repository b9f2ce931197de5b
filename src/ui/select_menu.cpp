#include "ui/select_menu.h"

#include "ui/pop_up.h"

namespace brindle {

SelectMenu::SelectMenu(QWidget* parent) : QMenu("Select", parent) { setObjectName("mnuSelect"); }

void SelectMenu::Attach(ListSelection& selection, MailList& main) {
  main_ = &main;
  const auto add = [&](const char* name, const char* text, void (ListSelection::*run)(MailList&)) {
    return AddMenuItem(*this, name, text, [this, &selection, run] {
      if (MailList* list = Target()) (selection.*run)(*list);
    });
  };
  mnuSelectAll_ = add("mnuSelectAll", "&All", &ListSelection::mnuSelectAll_Click);
  mnuSelectAll_->setVisible(false);
  add("mnuSelectNone", "&None", &ListSelection::mnuSelectNone_Click);
  addSeparator();
  add("mnuSelectBetween", "&Between", &ListSelection::mnuSelectBetween_Click);
  add("mnuSelectString", "By &String", &ListSelection::mnuSelectString_Click);
  addSeparator();
  // These two stand in the menu and do nothing.
  AddMenuItem(*this, "mnuSelectSimilarLeft", "Similar From &Left", [] {});
  AddMenuItem(*this, "mnuSelectSimilarRight", "Similar From &Right", [] {});
}

// Which list is meant is said just before the menu pops up.
void SelectMenu::ServeMain(QPushButton& button) {
  connect(&button, &QPushButton::clicked, this, [this] { mnuSelectAll_->setVisible(false); });
  GiveMenu(button, *this);
}

void SelectMenu::ServeResults(MailList& results, QPushButton& button) {
  results_ = &results;
  resultsButton_ = &button;
  connect(&button, &QPushButton::clicked, this, [this] { mnuSelectAll_->setVisible(true); });
  GiveMenu(button, *this);
}

MailList* SelectMenu::Target() const {
  if (!mnuSelectAll_->isVisible()) return main_;
  return resultsButton_.isNull() ? nullptr : results_;
}

}  // namespace brindle
