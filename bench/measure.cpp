#include "measure.h"

#include <algorithm>
#include <cstdio>

namespace brindle {
namespace {

std::string JsonNumber(std::optional<double> value) {
  if (!value) return "null";
  char text[64];
  std::snprintf(text, sizeof text, "%.6g", *value);
  return text;
}

}  // namespace

double MillisecondsOf(const Action& action) {
  const double start = ProcessorMilliseconds();
  action();
  return ProcessorMilliseconds() - start;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void Print(const Figure& figure) {
  std::optional<double> ratio;
  if (figure.baseline && *figure.baseline > 0) ratio = figure.median / *figure.baseline;
  std::printf(
      "{\"name\": \"%s\", \"median\": %s, \"unit\": \"%s\", \"baseline\": %s, \"ratio\": %s, "
      "\"goal\": %s}\n",
      figure.name.c_str(), JsonNumber(figure.median).c_str(), figure.unit.c_str(),
      JsonNumber(figure.baseline).c_str(), JsonNumber(ratio).c_str(),
      JsonNumber(figure.goal).c_str());
  std::fflush(stdout);
}

}  // namespace brindle
