#include "platform/linux/CurlHttpClient.h"

#include <curl/curl.h>

#include <algorithm>

namespace nutrition {

struct CurlHttpClient::Transfer {
  CURL* easy = nullptr;
  curl_slist* headers = nullptr;
  HttpRequest request;
  Callback callback;
  std::string received;
  char error[CURL_ERROR_SIZE] = {};

  ~Transfer() {
    if (easy) curl_easy_cleanup(easy);
    curl_slist_free_all(headers);
  }
};

namespace {

size_t collect(char* data, size_t size, size_t count, void* target) {
  static_cast<std::string*>(target)->append(data, size * count);
  return size * count;
}

CURLM* asMulti(void* multi) {
  return static_cast<CURLM*>(multi);
}

}  // namespace

CurlHttpClient::CurlHttpClient() {
  static const bool initialised = (curl_global_init(CURL_GLOBAL_DEFAULT), true);
  (void)initialised;
  multi_ = curl_multi_init();
  worker_ = std::thread([this] { run(); });
}

CurlHttpClient::~CurlHttpClient() {
  {
    std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  curl_multi_wakeup(asMulti(multi_));
  worker_.join();
  curl_multi_cleanup(asMulti(multi_));
}

void CurlHttpClient::send(HttpRequest request, Callback callback) {
  auto transfer = std::make_unique<Transfer>();
  transfer->request = std::move(request);
  transfer->callback = std::move(callback);
  {
    std::lock_guard lock(mutex_);
    if (!stopping_) {
      pending_.push_back(std::move(transfer));
    }
  }
  if (transfer) {  // the client is shutting down
    transfer->callback(HttpResponse{0, {}, "cancelled"});
    return;
  }
  curl_multi_wakeup(asMulti(multi_));
}

void CurlHttpClient::start(std::unique_ptr<Transfer> transfer) {
  const HttpRequest& request = transfer->request;
  CURL* easy = curl_easy_init();
  transfer->easy = easy;
  for (const auto& [name, value] : request.headers) {
    transfer->headers = curl_slist_append(transfer->headers, (name + ": " + value).c_str());
  }
  curl_easy_setopt(easy, CURLOPT_URL, request.url.c_str());
  curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, transfer->headers);
  if (request.body) {
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body->data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(request.body->size()));
  }
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, long(request.timeout.count()));
  curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
  curl_easy_setopt(easy, CURLOPT_MAXREDIRS, 10L);
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, collect);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &transfer->received);
  curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, transfer->error);
  curl_easy_setopt(easy, CURLOPT_PRIVATE, transfer.get());
  curl_multi_add_handle(asMulti(multi_), easy);
  active_.push_back(std::move(transfer));
}

void CurlHttpClient::finish(Transfer* transfer, int code) {
  curl_multi_remove_handle(asMulti(multi_), transfer->easy);
  const auto found = std::find_if(active_.begin(), active_.end(),
                                  [&](const auto& t) { return t.get() == transfer; });
  std::unique_ptr<Transfer> owned = std::move(*found);
  active_.erase(found);

  HttpResponse response;
  if (code == CURLE_OK) {
    long status = 0;
    curl_easy_getinfo(owned->easy, CURLINFO_RESPONSE_CODE, &status);
    response.status = static_cast<int>(status);
    response.body = std::move(owned->received);
  } else {
    response.transportError = owned->error[0] != '\0'
                                  ? std::string(owned->error)
                                  : std::string(curl_easy_strerror(CURLcode(code)));
  }
  owned->callback(std::move(response));
}

void CurlHttpClient::run() {
  CURLM* multi = asMulti(multi_);
  while (true) {
    std::deque<std::unique_ptr<Transfer>> arrived;
    {
      std::lock_guard lock(mutex_);
      if (stopping_) break;
      arrived.swap(pending_);
    }
    for (auto& transfer : arrived)
      start(std::move(transfer));

    int running = 0;
    curl_multi_perform(multi, &running);
    int left = 0;
    while (CURLMsg* message = curl_multi_info_read(multi, &left)) {
      if (message->msg != CURLMSG_DONE) continue;
      Transfer* transfer = nullptr;
      curl_easy_getinfo(message->easy_handle, CURLINFO_PRIVATE, &transfer);
      finish(transfer, message->data.result);
    }
    curl_multi_poll(multi, nullptr, 0, 1000, nullptr);
  }

  // Shutting down: nothing more will be sent; everything unanswered is cancelled.
  std::deque<std::unique_ptr<Transfer>> unanswered;
  {
    std::lock_guard lock(mutex_);
    unanswered.swap(pending_);
  }
  for (auto& transfer : active_) {
    curl_multi_remove_handle(multi, transfer->easy);
    unanswered.push_back(std::move(transfer));
  }
  active_.clear();
  for (auto& transfer : unanswered)
    transfer->callback(HttpResponse{0, {}, "cancelled"});
}

}  // namespace nutrition
