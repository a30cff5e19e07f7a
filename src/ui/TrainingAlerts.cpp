#include "ui/TrainingAlerts.h"

#include "views/AlertController.h"

namespace nutrition {

void TrainingAlerts::showAlert(const std::string& alertMessage, const std::string& alertTitle,
                               ViewController& viewController) {
  auto alert = std::make_shared<AlertController>(alertTitle, alertMessage);
  alert->addAction({.title = "Ok", .style = AlertAction::Style::cancel, .handler = nullptr});
  viewController.present(alert, true);
}

}  // namespace nutrition
