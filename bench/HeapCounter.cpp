#include "bench/HeapCounter.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace nutrition::bench {
namespace {

// Counting is on only inside a window, so that the timed benchmarks pay one test of a flag.
// Windows are opened on one thread while the others wait.
std::atomic<bool> counting{false};
std::atomic<std::ptrdiff_t> live{0};  // bytes allocated minus bytes freed inside the window
std::atomic<std::ptrdiff_t> highest{0};
std::atomic<std::size_t> allocationCount{0};

void* allocate(std::size_t size) {
  void* p = std::malloc(size == 0 ? 1 : size);
  if (!p) throw std::bad_alloc();
  if (counting.load(std::memory_order_relaxed)) {
    allocationCount.fetch_add(1, std::memory_order_relaxed);
    const auto bytes = std::ptrdiff_t(malloc_usable_size(p));
    const std::ptrdiff_t now = live.fetch_add(bytes, std::memory_order_relaxed) + bytes;
    std::ptrdiff_t seen = highest.load(std::memory_order_relaxed);
    while (now > seen && !highest.compare_exchange_weak(seen, now, std::memory_order_relaxed)) {
    }
  }
  return p;
}

void release(void* p) {
  if (!p) return;
  if (counting.load(std::memory_order_relaxed)) {
    live.fetch_sub(std::ptrdiff_t(malloc_usable_size(p)), std::memory_order_relaxed);
  }
  std::free(p);
}

}  // namespace

HeapWindow::HeapWindow() {
  live.store(0);
  highest.store(0);
  allocationCount.store(0);
  counting.store(true);
}

HeapWindow::~HeapWindow() {
  counting.store(false);
}

std::size_t HeapWindow::peak() const {
  return std::size_t(highest.load());
}

std::size_t HeapWindow::allocations() const {
  return allocationCount.load();
}

}  // namespace nutrition::bench

void* operator new(std::size_t size) {
  return nutrition::bench::allocate(size);
}
void* operator new[](std::size_t size) {
  return nutrition::bench::allocate(size);
}
void operator delete(void* p) noexcept {
  nutrition::bench::release(p);
}
void operator delete[](void* p) noexcept {
  nutrition::bench::release(p);
}
void operator delete(void* p, std::size_t) noexcept {
  nutrition::bench::release(p);
}
void operator delete[](void* p, std::size_t) noexcept {
  nutrition::bench::release(p);
}
