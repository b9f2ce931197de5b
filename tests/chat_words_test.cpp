// What is found in a line of chat: nicks, times and web addresses.
#include <gtest/gtest.h>

#include "base/text.h"
#include "irc/chat_style.h"
#include "irc/irc_address.h"
#include "irc/link_finder.h"
#include "irc/nick_words.h"

namespace brindle {
namespace {

TEST(ChatWords, FindsANickAsAWordOnly) {
  for (const char* said : {"hi BOB!", "<bob> x", "a bobbob bob",
                           "\003"
                           "4bob:"}) {
    EXPECT_TRUE(Mentions(said, "Bob")) << said;
  }
  for (const char* said : {"", "bobby", "bob_", "bob9", "xbob", "b ob", "bob-",
                           "\xC3\xA4"
                           "bob"}) {
    EXPECT_FALSE(Mentions(said, "bob")) << said;
  }
  EXPECT_FALSE(Mentions("a  b", ""));
}

TEST(ChatWords, CompletesNicksInTurn) {
  const std::vector<std::string> names = {"@Mailo", "+mail", "bob", "MAIZE"};
  using Case = std::pair<const char*, const char*>;
  // What is typed, with "|" for the cursor, and what each Tab makes of it.
  for (const auto& [typed, after] : {Case{"mai|", "mail: |;Mailo: |;MAIZE: |;mai|;mail: |"},
                                     {"hi B|", "hi bob |;hi B|"},
                                     {"/msg bo| you", "/msg bob |you"},
                                     {"x|", ""},
                                     {"bob |", ""}}) {
    NickCompletion completion;
    const std::string_view text = typed;
    NickCompletion::Typed line{RemoveChars(text, "|"), text.find('|')};
    for (const std::string_view wanted : Split(after, ";")) {
      const auto next = completion.Next(line, names);
      ASSERT_EQ(next.has_value(), !wanted.empty()) << typed;
      if (!next) break;
      line = *next;
      EXPECT_EQ(line.text.substr(0, line.cursor) + "|" + line.text.substr(line.cursor), wanted);
    }
  }
}

TEST(ChatWords, FindsTheTimeOfALine) {
  EXPECT_EQ(TimeLength("[3:07pm] <a> b"), 9u);
  EXPECT_EQ(TimeLength("[12:59am] "), 10u);
  for (const char* line : {"", "[3:07pm]", "[3:07xm] ", "[a:07pm] ", "3:07pm] x", "[123:07pm] "}) {
    EXPECT_EQ(TimeLength(line), 0u) << line;
  }
}

TEST(ChatWords, FindsWebAddresses) {
  using Case = std::pair<const char*, const char*>;
  for (const auto& [line, links] :
       {Case{"see http://a.example/l?x=1#y, or HTTPS://b.example.",
             "http://a.example/l?x=1#y HTTPS://b.example"},
        {"(http://a.example/f_(x))", "http://a.example/f_(x)"},
        {"<http://a.example>http://b.example", "http://a.example http://b.example"},
        {"file:///etc javascript://x ftp://a irc://b :// http:// https://...", ""},
        {"xhttp://a.example", "http://a.example"}}) {
    std::string found;
    const std::string_view text = line;
    for (const LinkRange& link : FindLinks(text)) {
      found +=
          (found.empty() ? "" : " ") + std::string(text.substr(link.begin, link.end - link.begin));
    }
    EXPECT_EQ(found, links);
  }
}

TEST(ChatWords, ReadsIrcAddressesStrictly) {
  using Case = std::pair<std::string, const char*>;
  // Host, port, room, and an s for a secure one.
  for (const auto& [text, read] : {
           Case{"IRC://a-b.example:7000/", "a-b.example 7000  "},
           {"ircs://h/room", "h 6697 #room s"},
           {"irc://h/%23g%79%C3%aa", "h 6667 #gy\xC3\xAA "},
           {"irc://[::1]:65535/x", "::1 65535 #x "},
           {"irc://user@h", ""},
           {"irc://h:65536", ""},
           {"irc://[::1", ""},
           {"irc://h\r\nQUIT", ""},
           {"irc://h/a%0D%0AQUIT", ""},
           {"irc://h/a%20b", ""},
           {"irc://h/a,b", ""},
           {"irc://h/%2", ""},
           {"irc://h/a?key=b", ""},
           {"irc://h/" + std::string(200, 'a'), ""},
           {"irc://" + std::string(254, 'a'), ""},
       }) {
    const auto address = ParseIrcAddress(text);
    EXPECT_EQ(address ? address->host + " " + std::to_string(address->port) + " " + address->room +
                            (address->secure ? " s" : " ")
                      : "",
              read)
        << text;
  }
}

}  // namespace
}  // namespace brindle
