// Saves settings and lists over and over until it is killed: each round writes its own number into
// every place. Writes one byte to its output after the first round.

#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/native.h"
#include "settings/data_folder.h"
#include "support/save_round.h"

int main(int argc, char** argv) {
  using namespace brindle;
  if (argc != 3) return 2;
  const DataPaths paths = PathsIn(argv[1]);
  NativeFiles files;
  for (int round = std::atoi(argv[2]);; ++round) {
    if (!SaveRound(files, paths, round)) return 1;
    if (round == std::atoi(argv[2]) && write(STDOUT_FILENO, ".", 1) != 1) return 1;
  }
}
