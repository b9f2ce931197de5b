#pragma once
// What the update list says, and whether it offers something newer.

#include <string>
#include <string_view>

namespace brindle {

struct Version {
  long long major = 0;
  long long minor = 0;
  long long revision = 0;
};

struct UpdateList {
  Version version;
  long long kilobytes = 1;
  std::string news;
  // The program file's SHA-256 as 64 hexadecimal digits; empty when the list names none.
  std::string sha256;
};

// Reads the INI text of an update list; what is missing has its default.
UpdateList ReadUpdateList(std::string_view text);

// Compares field by field: one greater field is enough, also when an earlier one is lower.
bool OffersUpdate(const Version& offered, const Version& own);

// The usual order, in which an earlier field decides. A signed list that somebody kept is signed
// still, so it must not lead back.
bool IsLater(const Version& offered, const Version& own);

// Whether a list says what the program file must be.
bool NamesFile(const UpdateList& list);

// "Update to v0.6.0; 250kb; 50s on a 56k modem"
std::string UpdateSummary(const UpdateList& list);

// Where an update comes from.
struct UpdateServer {
  std::string address;  // host and, where given, port: what the user is shown
  std::string base;     // what the paths are appended to; empty when the setting is no such address
};

// `base` is an http or https address, with or without port and path, or a bare host, which means
// http. Blanks around it and slashes at its end are ignored.
UpdateServer ReadUpdateServer(std::string_view base);

}  // namespace brindle
