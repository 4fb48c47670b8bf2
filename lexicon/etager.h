#pragma once
// A small stack of 32-bit numbers. The pattern search keeps on it the nodes
// of the word tree it walks over fixed letters, and pops them on its way back.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ostrane {

class ClsEtager {
 public:
  // Makes the stack anew with room for `depth` values. Returns 0.
  int RazEtager(int depth);
  // Pushes a value. Beyond the depth it is an index error that ends the program.
  void SubTirer(int32_t value) {
    if (size_t(count_) + 1 >= values_.size()) Overflow();
    values_[size_t(++count_)] = value;
  }
  // Pops the top value into `value`. On an empty stack it is internal error 101,
  // which ends the program.
  void SubMuse(int32_t& value) {
    if (count_ <= 0) Underflow();
    value = values_[size_t(count_--)];
  }
  int Count() const { return count_; }

 private:
  [[noreturn]] void Overflow() const;
  [[noreturn]] static void Underflow();

  std::vector<int32_t> values_;  // index 0 is never used
  int count_ = 0;
};

}  // namespace ostrane
