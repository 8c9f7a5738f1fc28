#include "text/wording.h"

namespace {

Wording::Words used;  // needs no construction that others could come before

}  // namespace

void Wording::use(const Words& words) { used = words; }

const Wording::Words& Wording::get() { return used; }
