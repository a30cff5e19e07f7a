#pragma once
// Counts the heap the benchmark program uses: the program replaces the global operator new
// and delete, and a HeapWindow reports the most bytes live at once while it is open.

#include <cstddef>

namespace nutrition::bench {

class HeapWindow {
 public:
  HeapWindow();  // starts counting
  ~HeapWindow();
  HeapWindow(const HeapWindow&) = delete;
  HeapWindow& operator=(const HeapWindow&) = delete;

  // The most bytes allocated and not yet freed at any moment since the start.
  std::size_t peak() const;
  // How many allocations were made since the start.
  std::size_t allocations() const;
};

}  // namespace nutrition::bench
