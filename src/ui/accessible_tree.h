#pragma once
// What the toolkit leaves out of the tree that assistive technology sees: the menu of a button,
// which it shows only while it is open, and the names of fields in combo boxes.

#include <QWidget>

namespace brindle {

// Names the fields of all editable combo boxes in `window` like their boxes, or the labels before
// them; the toolkit names a box like its text.
void NameTextFields(QWidget& window);

// For all buttons looked at from now on; once is enough, again does no harm.
void InstallButtonAccessibility();

}  // namespace brindle
