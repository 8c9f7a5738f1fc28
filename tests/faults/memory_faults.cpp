#include <new>

#include <pugixml.hpp>

#include "faults/faults.h"
#include "support/allocation_faults.h"

namespace FaultTest {
namespace {

void* allocate(std::size_t size) { return ::operator new(size, std::nothrow); }

void release(void* block) { ::operator delete(block); }

/// Lets the XML parser have its memory from where everything else has it.
struct ParserMemory {
  ParserMemory() { pugi::set_memory_management_functions(allocate, release); }
};
const ParserMemory parserMemory;

}  // namespace

Kind getKind() { return Kind::Memory; }

bool fails(int n, const std::function<void()>& call) {
  return Found::Tests::runsOutOfMemory(n, call);
}

void callHost(const std::string& /*what*/) { release(::operator new(1)); }

long countBlocks() { return Found::Tests::countLiveBlocks(); }

}  // namespace FaultTest
