#pragma once
// Captions with a letter that works with Alt.

#include <QString>

namespace brindle {

// `caption` with its letter `key` marked: at the beginning of a word, where there is one.
// REQUIRES: the letter is in the caption, which has no marks.
inline QString WithMnemonic(QString caption, char key) {
  const qsizetype word = (' ' + caption).indexOf(QString(' ') + key, 0, Qt::CaseInsensitive);
  return caption.insert(word >= 0 ? word : caption.indexOf(key, 0, Qt::CaseInsensitive), '&');
}

}  // namespace brindle
