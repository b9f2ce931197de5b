#pragma once
// What the benchmark programs share: timing, baselines that are whole processes, memory, and the
// one form of their output. Every figure is a line of JSON:
//   {"name": ..., "median": ..., "unit": ..., "baseline": ..., "ratio": ..., "goal": ...}
// with null for a baseline, ratio or goal that a figure has not. Anything else a program prints on
// its standard output is no figure.

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brindle {

using Action = std::function<void()>;

// The processor time that `action` costs, which other programs do not change much.
double MillisecondsOf(const Action& action);

// The processor time that this process and the ended ones that it started have used so far, their
// own and the system's for them. On Windows, which counts it in steps of 10 ms or more, the time
// that has passed.
double ProcessorMilliseconds();

double Median(std::vector<double> values);

// Runs a program to its end, without output; nothing when it cannot be run. The exit status does
// not matter: a search that finds nothing fails.
bool RunProgram(const std::vector<std::string>& arguments);

// Bytes of memory that this process occupies; 0 where the system does not tell.
double ResidentBytes();

// What `measure` answers in a process of its own, which starts without any traces of this one; on
// Windows, where a process cannot go on in two, in this one. Nothing when that process failed.
std::optional<double> InOwnProcess(const std::function<double()>& measure);

struct Figure {
  std::string name;
  double median = 0;
  std::string unit;
  std::optional<double> baseline;
  std::optional<double> goal;  // the highest ratio wanted
};

void Print(const Figure& figure);

}  // namespace brindle
