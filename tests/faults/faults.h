#pragma once

#include <functional>
#include <string>

/// What can fail beneath and beside the library. The tests of this folder are built twice: in one
/// program the faults are allocations that find no memory, the XML parser's included; in the other
/// they are calls of the companion libraries that throw.
namespace FaultTest {

enum class Kind { Memory, Call };

/// The faults of this program.
Kind getKind();

/// Runs `call` with its `n`-th fault (1 is the first). True when that one came out as it is, false
/// when `call` came through because it makes fewer.
bool fails(int n, const std::function<void()>& call);

/// To be called where the library calls the host's own objects: a fault like all others.
void callHost(const std::string& what);

/// Blocks of memory that are not freed yet.
long countBlocks();

}  // namespace FaultTest
