#pragma once
// In-module notifications by name ("updateRecetasCollectionView", "darkModeChange"). An
// observer keeps its observation; dropping it stops the deliveries, so a screen that goes away
// is never called back.
//
//   observation_ = center.addObserver("darkModeChange", [this] { applyLook(); });
//   center.post("darkModeChange");

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace nutrition {

class NotificationCenter {
 public:
  class Observation {
   public:
    Observation() = default;
    Observation(Observation&& other) noexcept { *this = std::move(other); }
    Observation& operator=(Observation&& other) noexcept;
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    ~Observation() { cancel(); }
    void cancel();

   private:
    friend class NotificationCenter;
    struct Observers;
    Observation(std::weak_ptr<Observers> observers, std::uint64_t id)
        : observers_(std::move(observers)), id_(id) {}
    std::weak_ptr<Observers> observers_;
    std::uint64_t id_ = 0;
  };

  NotificationCenter();
  [[nodiscard]] Observation addObserver(std::string name, std::function<void()> callback);
  // Calls every observer of `name`, in the order they were added.
  void post(const std::string& name);
  [[nodiscard]] std::size_t observerCount(const std::string& name) const;

 private:
  std::shared_ptr<Observation::Observers> observers_;
};

}  // namespace nutrition
