#include "files/temporary_file.h"
#include "program.h"
#include "terminal.h"

int main(int argc, char** argv) {
  Terminal::endOnClosedPipe();
  TemporaryFile::watchInterruptions();
  return Program::run(argc, argv);
}
