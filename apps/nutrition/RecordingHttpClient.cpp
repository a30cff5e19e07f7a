#include "RecordingHttpClient.h"

namespace nutrition::cli {

void RecordingHttpClient::send(HttpRequest request, Callback callback) {
  std::size_t index = 0;
  {
    std::lock_guard lock(mutex_);
    Exchange exchange{request.method, request.url, request.body.value_or(""), 0, {}, false};
    if (request.url.find("api/auth/login") != std::string::npos) {
      exchange.body = "(withheld: it holds the password)";
    }
    index = exchanges_.size();
    exchanges_.push_back(std::move(exchange));
  }
  inner_->send(std::move(request),
               [this, index, callback = std::move(callback)](HttpResponse response) {
                 {
                   std::lock_guard lock(mutex_);
                   exchanges_[index].answered = true;
                   exchanges_[index].status = response.status;
                   exchanges_[index].transportError = response.transportError;
                 }
                 callback(std::move(response));
               });
}

std::vector<RecordingHttpClient::Exchange> RecordingHttpClient::exchanges() const {
  std::lock_guard lock(mutex_);
  return exchanges_;
}

std::optional<std::string> RecordingHttpClient::transportError() const {
  std::lock_guard lock(mutex_);
  for (const auto& exchange : exchanges_) {
    if (exchange.transportError) return exchange.transportError;
  }
  return std::nullopt;
}

}  // namespace nutrition::cli
