#pragma once
// Tables read at random places (filters, hash tables of several megabytes)
// kept in memory pages of 2 MB where the system gives them: a read at a
// random place then seldom waits for the page tables as well as for the
// memory. Smaller tables, and systems without such pages, get ordinary
// memory.

#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace ostrane {

template <class T>
struct BigTableAllocator {
  using value_type = T;
  static constexpr size_t kPage = size_t(2) << 20;

  BigTableAllocator() = default;
  template <class U>
  BigTableAllocator(const BigTableAllocator<U>&) noexcept {}

  T* allocate(size_t n) {
    const size_t bytes = n * sizeof(T);
    if (bytes < kPage / 2) return static_cast<T*>(::operator new(bytes, std::align_val_t(alignof(T) > 64 ? alignof(T) : 64)));
    const size_t rounded = (bytes + kPage - 1) / kPage * kPage;
    void* p = std::aligned_alloc(kPage, rounded);
    if (!p) throw std::bad_alloc();
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    madvise(p, rounded, MADV_HUGEPAGE);  // advice only: ordinary pages when refused
#endif
    return static_cast<T*>(p);
  }
  void deallocate(T* p, size_t n) noexcept {
    if (n * sizeof(T) < kPage / 2) {
      ::operator delete(p, std::align_val_t(alignof(T) > 64 ? alignof(T) : 64));
      return;
    }
    std::free(p);
  }
  template <class U>
  bool operator==(const BigTableAllocator<U>&) const noexcept {
    return true;
  }
};

template <class T>
using BigTable = std::vector<T, BigTableAllocator<T>>;

// A place of a big table asked of the memory ahead of its reading. Written
// so that no compiler drops it (a loop of mere hints may be taken for one
// that does nothing).
inline void AskAhead(const void* p) {
#if defined(__x86_64__) || defined(__i386__)
  asm volatile("prefetcht0 %0" : : "m"(*static_cast<const char*>(p)));
#else
  __builtin_prefetch(p);
#endif
}

}  // namespace ostrane
