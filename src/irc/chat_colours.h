#pragma once
// Chat lines in colour: turns a display text with colour codes (character 3 and a colour number, as
// IRC clients write them) into runs of one colour each, and puts them at the end of a view.

#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "settings/options.h"

namespace brindle {

struct ColouredRun {
  Colour colour;
  std::string text;  // CR LF is a line break; holds no other control of the line's layout
  friend bool operator==(const ColouredRun&, const ColouredRun&) = default;
};

// A view that shows coloured text and only ever grows at its end.
class ChatView {
 public:
  virtual ~ChatView() = default;
  virtual void Append(const std::vector<ColouredRun>& runs) = 0;
  // Characters shown so far; a line break counts as two.
  virtual size_t TextLength() const = 0;
};

// `text` as a view may show it: only our own CR LF breaks a line, so that received text cannot pose
// as a line of its own. Whatever else a view would take for a break is a blank, and what must not
// reach a view at all is left out. The display queue holds only such text, so that no mark is taken
// out of a text before: that might join a CR and a LF. Points into `text` where nothing needs a
// change, else into `changed`.
std::string_view ShowableText(std::string_view text, std::string& changed);

// `text` without the marks that the colour rules do not know: bold, underline, italic, reverse,
// strike and monospace, colours in hexadecimal with their digits, and character 1, which encloses
// what programs ask each other.
std::string WithoutFormatting(std::string_view text);

// The index (0 to 15) of the console colour that shows IRC colour `number`.
int IrcColorToBasic(int number);

// The colour of a console colour index. REQUIRES: 0 <= index <= 15.
Colour BasicColour(int index);

// The runs of `text`, which must be showable, without formatting. A text without a colour mark is
// black. In one with marks, each piece takes the colour whose number follows its mark, be it after
// some other marks, a comma, a blank or a hyphen, unless the options want digits that stand apart
// from the mark kept. Text of the room's background colour takes the user's room colour instead,
// whichever view it is for, so that it can be read.
std::vector<ColouredRun> ColouredRuns(std::string_view text, const Options& options);

// Appends the runs of `text` to a view.
void Color_Response(std::string_view text, ChatView& view, const Options& options);

}  // namespace brindle
