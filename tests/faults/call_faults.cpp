#include "faults/faults.h"
#include "recording.h"
#include "support/allocation_faults.h"

namespace FaultTest {

Kind getKind() { return Kind::Call; }

bool fails(int n, const std::function<void()>& call) {
  Recording::clearLog();
  Recording::failAt(n);
  bool failed = false;
  try {
    call();
  } catch (const Recording::Failure&) {
    failed = true;
  }
  Recording::failAt(0);
  return failed;
}

void callHost(const std::string& what) { Recording::call(what); }

long countBlocks() {
  Recording::clearLog();
  return Found::Tests::countLiveBlocks();
}

}  // namespace FaultTest
