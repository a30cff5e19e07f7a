#pragma once
// What one decode shares between its reading functions: the cursor, and one scratch list per
// element type in which an array gathers its elements before they move into a list allocated
// once at its final size. Growing lists element by element was most of the allocations of a
// decode. Everything is released when the decode ends; nothing outlives it.

#include <string_view>
#include <utility>
#include <vector>

#include "json/JsonCursor.h"

namespace nutrition::json {

class ReadContext : public Cursor {
 public:
  explicit ReadContext(std::string_view text) : Cursor(text) {}
  ~ReadContext() {
    for (const Slot& slot : slots_)
      slot.destroy(slot.list);
  }
  ReadContext(const ReadContext&) = delete;
  ReadContext& operator=(const ReadContext&) = delete;

  // The scratch list for elements of type T. Arrays use it as a stack: each appends above the
  // elements of the arrays that enclose it and removes its own when it ends.
  template <class T>
  std::vector<T>& scratch() {
    for (const Slot& slot : slots_) {
      if (slot.type == &kTypeTag<T>) return *static_cast<std::vector<T>*>(slot.list);
    }
    auto* list = new std::vector<T>();
    slots_.push_back({&kTypeTag<T>, list, [](void* p) { delete static_cast<std::vector<T>*>(p); }});
    return *list;
  }

 private:
  template <class T>
  static constexpr char kTypeTag = 0;  // its address names T

  struct Slot {
    const void* type;
    void* list;
    void (*destroy)(void*);
  };
  std::vector<Slot> slots_;
};

}  // namespace nutrition::json
