// serve_lines LINES: the server of receive_bench for clients that cannot start it, as those that
// run under Wine. Prints its port; ends with its standard input.

#include <cstdio>
#include <cstdlib>

#include "line_server.h"

int main(int argc, char** argv) {
  const brindle::LineServer server(argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 0);
  std::printf("%d\n", server.Port());
  std::fflush(stdout);
  while (std::getchar() != EOF) continue;
  return server.Port() == 0 ? EXIT_FAILURE : EXIT_SUCCESS;
}
