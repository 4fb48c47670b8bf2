#pragma once
// Zero-filled memory asked for in huge pages, for the word tree and the index
// the first search of a program works out: megabytes that in small pages
// would cost thousands of page faults, each dear on a virtual machine.

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace ostrane {

class HugeBlock {
 public:
  HugeBlock() = default;
  // At least `bytes`, all zero.
  explicit HugeBlock(size_t bytes);
  HugeBlock(HugeBlock&& other) noexcept { Swap(other); }
  HugeBlock& operator=(HugeBlock&& other) noexcept {
    HugeBlock gone(std::move(*this));
    Swap(other);
    return *this;
  }
  HugeBlock(const HugeBlock&) = delete;
  HugeBlock& operator=(const HugeBlock&) = delete;
  ~HugeBlock();

  std::byte* data() const { return data_; }
  size_t size() const { return size_; }
  // Gives back the whole pages of [offset, offset + bytes): a part that was
  // only needed for a while. It reads as zero afterwards.
  void Forget(size_t offset, size_t bytes) noexcept;

 private:
  void Swap(HugeBlock& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(base_, other.base_);
    std::swap(mapped_, other.mapped_);
  }

  std::byte* data_ = nullptr;
  size_t size_ = 0;
  void* base_ = nullptr;
  size_t mapped_ = 0;
};

// A stretch of records inside a HugeBlock (or nothing).
template <class T>
class Stretch {
  static_assert(std::is_trivially_copyable_v<T>, "records only: the memory is zero-filled, never constructed");

 public:
  Stretch() = default;
  Stretch(T* data, size_t size) : data_(data), size_(size) {}
  size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T* data() const { return data_; }
  T& operator[](size_t i) const { return data_[i]; }
  T* begin() const { return data_; }
  T* end() const { return data_ + size_; }

 private:
  T* data_ = nullptr;
  size_t size_ = 0;
};

// Lays stretches one after the other in a block, each on a cache line.
class BlockPlan {
 public:
  template <class T>
  size_t Add(size_t count) {
    const size_t at = (bytes_ + 63) & ~size_t(63);
    bytes_ = at + count * sizeof(T);
    return at;
  }
  size_t Bytes() const { return bytes_; }

 private:
  size_t bytes_ = 0;
};

template <class T>
Stretch<T> StretchAt(const HugeBlock& block, size_t offset, size_t count) {
  return Stretch<T>(reinterpret_cast<T*>(block.data() + offset), count);
}

}  // namespace ostrane
