// make_list PATH ROWS: writes a made-up list file.

#include <cstdlib>
#include <optional>

#include "base/text.h"
#include "generate_list.h"

int main(int argc, char** argv) {
  if (argc != 3) return EXIT_FAILURE;
  const auto rows = brindle::WholeNumber(argv[2], 0, 100'000'000);
  if (!rows) return EXIT_FAILURE;
  return brindle::GenerateList(argv[1], static_cast<size_t>(*rows)) ? EXIT_SUCCESS : EXIT_FAILURE;
}
