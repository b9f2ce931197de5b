#include "settings/secure_servers.h"

#include <algorithm>

#include "base/text.h"
#include "settings/endpoint.h"

namespace brindle {
namespace {

constexpr char kTrust[] = "trust";
constexpr char kStrict[] = "strict";
constexpr size_t kMostRows = 200;

std::string RowKey(const char* key, size_t row) { return key + std::to_string(row); }

std::string NameOf(std::string_view row) { return std::string(row.substr(0, row.find(' '))); }

}  // namespace

std::vector<std::string> SecureServers::Rows(const char* key) const {
  std::vector<std::string> rows;
  while (rows.size() < kMostRows) {
    std::string row = settings_.ReadSetting(kSecureServersSection, RowKey(key, rows.size()));
    if (row.empty()) break;
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string SecureServers::Find(const char* key, const std::string& name) const {
  for (const std::string& row : Rows(key)) {
    if (NameOf(row) == name) return row.substr(std::min(name.size() + 1, row.size()));
  }
  return "";
}

// A row without a rest goes; the last one takes its place.
void SecureServers::Put(const char* key, const std::string& name, const std::string& rest) {
  std::vector<std::string> rows = Rows(key);
  const size_t before = rows.size();
  std::erase_if(rows, [&](const std::string& row) { return NameOf(row) == name; });
  if (!rest.empty()) rows.insert(rows.begin(), name + " " + rest);
  rows.resize(std::min(rows.size(), kMostRows));
  std::vector<Setting> settings;
  for (size_t i = 0; i < std::max(before, rows.size()); ++i) {
    settings.push_back({kSecureServersSection, RowKey(key, i), i < rows.size() ? rows[i] : ""});
  }
  settings_.WriteSettings(settings);
}

std::string SecureServers::Trusted(std::string_view host, int port) const {
  return Find(kTrust, EndpointText(LowerCase(host), port));
}

void SecureServers::Trust(std::string_view host, int port, const std::string& fingerprint) {
  Put(kTrust, EndpointText(LowerCase(host), port), fingerprint);
}

std::optional<int> SecureServers::StrictPort(std::string_view host, Seconds now) const {
  const std::string found = Find(kStrict, LowerCase(host));
  const std::vector<std::string_view> words = Split(found, " ");
  if (words.size() != 2 || LeadingNumber(words[1]) <= now) return std::nullopt;
  const auto port = WholeNumber(words[0], 1, kHighestPort);
  return port ? std::optional(static_cast<int>(*port)) : std::nullopt;
}

void SecureServers::SetStrict(std::string_view host, int port, Seconds duration, Seconds now) {
  const std::string until = std::to_string(now + std::clamp(duration, Seconds{0}, kLongestWish));
  Put(kStrict, LowerCase(host), duration > 0 ? std::to_string(port) + " " + until : "");
}

}  // namespace brindle
