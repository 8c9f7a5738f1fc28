#include "program.h"
#include "terminal.h"

int main(int argc, char** argv) {
  Terminal::endOnClosedPipe();
  return Program::run(argc, argv);
}
