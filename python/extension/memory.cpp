#include "python/extension/memory.h"

#include <sys/mman.h>

#include <vector>

#include "python/extension/rejection.h"

namespace vistrel::python {
namespace {

constexpr size_t kMinBytes = size_t{1} << 20, kHugePage = size_t{2} << 20;
constexpr size_t kMaxPooledBytes = size_t{256} << 20;

struct Block {
  void* memory;
  size_t bytes;
};

// Python's lock guards the pool. It is never destroyed: arrays may outlast the interpreter.
struct Pool {
  std::vector<Block> blocks;  // the last one was returned last
  size_t bytes = 0;
};
Pool& pool() {
  static Pool* const all = new Pool;
  return *all;
}

void remove(size_t index) {
  Pool& p = pool();
  p.bytes -= p.blocks[index].bytes;
  p.blocks.erase(p.blocks.begin() + static_cast<ptrdiff_t>(index));
}

void giveBack(void* pointer) {
  Block* const block = static_cast<Block*>(pointer);
  Pool& p = pool();
  if (block->bytes <= kMaxPooledBytes) {
    p.blocks.push_back(*block);
    p.bytes += block->bytes;
  } else {
    munmap(block->memory, block->bytes);
  }
  delete block;
  while (p.bytes > kMaxPooledBytes) {
    munmap(p.blocks.front().memory, p.blocks.front().bytes);
    remove(0);
  }
}

// Blocks of the same size only, so that no array holds more memory than it shows.
void* takeMemory(size_t bytes) {
  Pool& p = pool();
  for (size_t i = p.blocks.size(); i-- > 0;) {
    if (p.blocks[i].bytes != bytes) continue;
    void* const memory = p.blocks[i].memory;
    remove(i);
    return memory;
  }
  void* const memory =
      mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) reject(VISTREL_NO_MEMORY, "", "", "out of memory");
  madvise(memory, bytes, MADV_HUGEPAGE);
  return memory;
}

size_t roundedUp(size_t bytes) { return (bytes + kHugePage - 1) & ~(kHugePage - 1); }

}  // namespace

py::array newArray(const py::dtype& dtype, const py::array::ShapeContainer& shape) {
  size_t bytes = static_cast<size_t>(dtype.itemsize());
  for (const py::ssize_t size : *shape) bytes *= static_cast<size_t>(size);
  if (bytes < kMinBytes) return py::array(dtype, shape);
  const size_t rounded = roundedUp(bytes);
  void* const memory = takeMemory(rounded);
  const py::capsule owner(new Block{memory, rounded}, giveBack);
  return py::array(dtype, shape, {}, memory, owner);
}

void emptyPool() {
  Pool& p = pool();
  for (const Block& block : p.blocks) munmap(block.memory, block.bytes);
  p = {};
}

}  // namespace vistrel::python
