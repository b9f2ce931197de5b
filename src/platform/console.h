#pragma once
// Where the command line's answers go.

namespace brindle {

// Lets what is printed appear in the console that the program was started from, where a program
// with windows has none of its own. Output that goes elsewhere already is left alone.
void UseCallersConsole();

}  // namespace brindle
