#include "lexicon/huge_array.h"

#include <cstdlib>
#include <new>

#ifdef __linux__
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace ostrane {

HugeBlock::HugeBlock(size_t bytes) {
  if (bytes == 0) return;
#ifdef __linux__
  // Aligned on a huge page inside a slightly larger mapping, and advised so.
  constexpr size_t kHugePage = size_t(2) << 20;
  mapped_ = bytes + kHugePage;
  base_ = mmap(nullptr, mapped_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base_ == MAP_FAILED) {
    base_ = nullptr;
    throw std::bad_alloc();
  }
  const uintptr_t aligned = (reinterpret_cast<uintptr_t>(base_) + kHugePage - 1) & ~(kHugePage - 1);
  madvise(reinterpret_cast<void*>(aligned), bytes, MADV_HUGEPAGE);
  data_ = reinterpret_cast<std::byte*>(aligned);
#else
  base_ = std::calloc(1, bytes);
  if (!base_) throw std::bad_alloc();
  mapped_ = bytes;
  data_ = static_cast<std::byte*>(base_);
#endif
  size_ = bytes;
}

HugeBlock::~HugeBlock() {
  if (!base_) return;
#ifdef __linux__
  munmap(base_, mapped_);
#else
  std::free(base_);
#endif
}

void HugeBlock::Forget(size_t offset, size_t bytes) noexcept {
#ifdef __linux__
  const uintptr_t page = uintptr_t(sysconf(_SC_PAGESIZE));
  const uintptr_t from = (reinterpret_cast<uintptr_t>(data_) + offset + page - 1) & ~(page - 1);
  const uintptr_t to = (reinterpret_cast<uintptr_t>(data_) + offset + bytes) & ~(page - 1);
  if (to > from) madvise(reinterpret_cast<void*>(from), to - from, MADV_DONTNEED);
#else
  (void)offset;
  (void)bytes;
#endif
}

}  // namespace ostrane
