#include "platform/linux/CurlHttpClient.h"

#include <curl/curl.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <exception>
#include <new>
#include <optional>
#include <string>

#include "base/Log.h"

namespace nutrition {

using Steady = std::chrono::steady_clock;

struct CurlHttpClient::Transfer {
  // Why the write callback ended the transfer, when it did.
  enum class Stop { no, overCap, outOfMemory };

  CURL* easy = nullptr;
  curl_slist* headers = nullptr;
  HttpRequest request;
  Callback callback;
  Steady::time_point deadline;  // for the request and the redirects it follows
  int redirects = 0;
  std::string received;
  Stop stopped = Stop::no;
  char error[CURL_ERROR_SIZE] = {};

  void release() {
    if (easy) curl_easy_cleanup(easy);
    easy = nullptr;
    curl_slist_free_all(headers);
    headers = nullptr;
  }
  ~Transfer() { release(); }
};

namespace {

CURLM* asMulti(void* multi) {
  return static_cast<CURLM*>(multi);
}

// Runs a completion; one that throws must not take the worker thread, and with it every other
// request, down.
void deliver(const HttpClient::Callback& callback, HttpResponse response) {
  try {
    callback(std::move(response));
  } catch (const std::exception& exception) {
    log(LogLevel::error, std::string("an HTTP completion threw: ") + exception.what());
  } catch (...) {
    log(LogLevel::error, "an HTTP completion threw");
  }
}

struct Origin {
  std::string scheme, host, port;
  bool operator==(const Origin&) const = default;
};

std::optional<Origin> originOf(const std::string& url) {
  CURLU* parsed = curl_url();
  if (!parsed) return std::nullopt;
  std::optional<Origin> origin;
  if (curl_url_set(parsed, CURLUPART_URL, url.c_str(), 0) == CURLUE_OK) {
    const auto part = [&](CURLUPart which, unsigned flags) {
      char* text = nullptr;
      std::string value;
      if (curl_url_get(parsed, which, &text, flags) == CURLUE_OK && text) value = text;
      curl_free(text);
      std::transform(value.begin(), value.end(), value.begin(),
                     [](unsigned char c) { return char(std::tolower(c)); });
      return value;
    };
    origin = Origin{part(CURLUPART_SCHEME, 0), part(CURLUPART_HOST, 0),
                    part(CURLUPART_PORT, CURLU_DEFAULT_PORT)};
  }
  curl_url_cleanup(parsed);
  return origin;
}

bool sameOrigin(const std::string& a, const std::string& b) {
  const auto first = originOf(a);
  return first && !first->host.empty() && first == originOf(b);
}

bool isRedirect(long status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
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
  transfer->deadline = Steady::now() + request.timeout;
  transfer->request = std::move(request);
  transfer->callback = std::move(callback);
  {
    std::lock_guard lock(mutex_);
    if (!stopping_) {
      pending_.push_back(std::move(transfer));
    }
  }
  if (transfer) {  // the client is shutting down
    deliver(transfer->callback, HttpResponse{0, {}, "cancelled"});
    return;
  }
  curl_multi_wakeup(asMulti(multi_));
}

std::size_t CurlHttpClient::receive(char* data, std::size_t size, std::size_t count,
                                    void* target) noexcept {
  auto& transfer = *static_cast<Transfer*>(target);
  std::string& body = transfer.received;
  const std::size_t cap = transfer.request.maxResponseBytes;
  const std::size_t length = size * count;
  if (length > cap - body.size()) {  // returning short ends the transfer with a write error
    transfer.stopped = Transfer::Stop::overCap;
    return 0;
  }
  try {
    if (body.empty()) {  // the first bytes: room for the stated length, within the cap
      curl_off_t stated = -1;
      curl_easy_getinfo(transfer.easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &stated);
      if (stated > 0) body.reserve(std::min(cap, std::size_t(stated)));
    }
    // Grow as appending would, but never to more than the cap.
    if (body.size() + length > body.capacity()) {
      body.reserve(std::min(cap, std::max(body.size() + length, 2 * body.capacity())));
    }
    body.append(data, length);
  } catch (...) {
    transfer.stopped = Transfer::Stop::outOfMemory;
    return 0;
  }
  return length;
}

void CurlHttpClient::start(std::unique_ptr<Transfer> transfer) {
  Transfer& t = *transfer;
  const HttpRequest& request = t.request;
  t.easy = curl_easy_init();
  try {
    if (!t.easy) throw std::bad_alloc();
    for (const auto& [name, value] : request.headers) {
      curl_slist* more = curl_slist_append(t.headers, (name + ": " + value).c_str());
      if (!more) throw std::bad_alloc();
      t.headers = more;
    }
    active_.push_back(std::move(transfer));
  } catch (const std::bad_alloc&) {
    // Nothing is in libcurl's hands yet.
    deliver(t.callback, HttpResponse{0, {}, "out of memory sending the request"});
    return;
  }

  CURL* easy = t.easy;
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(t.deadline - Steady::now()).count();
  curl_easy_setopt(easy, CURLOPT_URL, request.url.c_str());
  curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
  curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, request.method.c_str());
  curl_easy_setopt(easy, CURLOPT_HTTPHEADER, t.headers);
  if (request.body) {
    curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body->data());
    curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t(request.body->size()));
  }
  curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, long(std::max<std::int64_t>(1, left)));
  curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
  curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &CurlHttpClient::receive);
  curl_easy_setopt(easy, CURLOPT_WRITEDATA, &t);
  curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, t.error);
  curl_easy_setopt(easy, CURLOPT_PRIVATE, &t);
  curl_multi_add_handle(asMulti(multi_), easy);
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
    const char* location = nullptr;
    curl_easy_getinfo(owned->easy, CURLINFO_REDIRECT_URL, &location);
    HttpRequest& request = owned->request;
    if (isRedirect(status) && location && owned->redirects < kMaxRedirects &&
        sameOrigin(request.url, location)) {
      request.url = location;
      if (status == 303 || (status != 307 && status != 308 && request.method == "POST")) {
        request.method = "GET";
        request.body.reset();
      }
      ++owned->redirects;
      owned->received.clear();
      owned->release();
      start(std::move(owned));
      return;
    }
    response.status = static_cast<int>(status);
    response.body = std::move(owned->received);
  } else if (owned->stopped == Transfer::Stop::overCap) {
    response.transportError =
        "the answer is longer than " + std::to_string(owned->request.maxResponseBytes) + " bytes";
  } else if (owned->stopped == Transfer::Stop::outOfMemory) {
    response.transportError = "out of memory receiving the answer";
  } else {
    response.transportError = owned->error[0] != '\0'
                                  ? std::string(owned->error)
                                  : std::string(curl_easy_strerror(CURLcode(code)));
  }
  deliver(owned->callback, std::move(response));
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
      try {
        finish(transfer, message->data.result);
      } catch (const std::bad_alloc&) {
        log(LogLevel::error, "out of memory finishing an HTTP request; it gets no answer");
      }
    }
    // Waits for socket activity, libcurl's next timer, or send() waking it up.
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
    deliver(transfer->callback, HttpResponse{0, {}, "cancelled"});
}

}  // namespace nutrition
