#pragma once
// The module's plain message: a system alert with one "Ok" that only closes it.

#include <string>

#include "views/ViewController.h"

namespace nutrition {

class TrainingAlerts {
 public:
  static void showAlert(const std::string& alertMessage, const std::string& alertTitle,
                        ViewController& viewController);
};

}  // namespace nutrition
