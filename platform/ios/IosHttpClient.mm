#include "IosHttpClient.h"

#import <Foundation/Foundation.h>

#include <mutex>
#include <unordered_map>

namespace {

struct Transfer {
  nutrition::HttpClient::Callback callback;
  std::size_t maxBytes = nutrition::kMaxJsonResponseBytes;
  std::string body;
  int redirects = 0;
  bool overCap = false;
};

NSNumber* effectivePort(NSURL* url) {
  if (url.port != nil) return url.port;
  return [url.scheme.lowercaseString isEqualToString:@"https"] ? @443 : @80;
}

bool sameOrigin(NSURL* a, NSURL* b) {
  if (a == nil || b == nil) return false;
  NSNumber* portA = effectivePort(a);
  NSNumber* portB = effectivePort(b);
  return [a.scheme.lowercaseString isEqualToString:b.scheme.lowercaseString] &&
         [a.host.lowercaseString isEqualToString:b.host.lowercaseString] &&
         [portA isEqualToNumber:portB];
}

}  // namespace

// Receives the session's events for every transfer, keyed by task identifier. Callbacks run on
// the session's delegate queue, never on the main thread.
@interface NKSessionDelegate : NSObject <NSURLSessionDataDelegate>
- (void)addTask:(NSURLSessionTask*)task transfer:(Transfer)transfer;
@end

@implementation NKSessionDelegate {
  std::mutex _mutex;
  std::unordered_map<NSUInteger, Transfer> _transfers;
}

- (void)addTask:(NSURLSessionTask*)task transfer:(Transfer)transfer {
  std::lock_guard<std::mutex> lock(_mutex);
  _transfers.emplace(task.taskIdentifier, std::move(transfer));
}

- (void)URLSession:(NSURLSession*)session
              dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveResponse:(NSURLResponse*)response
     completionHandler:(void (^)(NSURLSessionResponseDisposition))completionHandler {
  (void)session;
  std::lock_guard<std::mutex> lock(_mutex);
  auto found = _transfers.find(dataTask.taskIdentifier);
  const long long expected = response.expectedContentLength;
  if (found != _transfers.end() && expected > 0 &&
      static_cast<unsigned long long>(expected) > found->second.maxBytes) {
    found->second.overCap = true;
    completionHandler(NSURLSessionResponseCancel);
    return;
  }
  completionHandler(NSURLSessionResponseAllow);
}

- (void)URLSession:(NSURLSession*)session
          dataTask:(NSURLSessionDataTask*)dataTask
    didReceiveData:(NSData*)data {
  (void)session;
  std::lock_guard<std::mutex> lock(_mutex);
  auto found = _transfers.find(dataTask.taskIdentifier);
  if (found == _transfers.end() || found->second.overCap) return;
  Transfer& transfer = found->second;
  if (transfer.body.size() + data.length > transfer.maxBytes) {
    // Past the cap nothing more is kept: the transfer ends as a transport error.
    transfer.overCap = true;
    transfer.body.clear();
    transfer.body.shrink_to_fit();
    [dataTask cancel];
    return;
  }
  [data enumerateByteRangesUsingBlock:^(const void* bytes, NSRange range, BOOL* stop) {
    (void)stop;
    transfer.body.append(static_cast<const char*>(bytes), range.length);
  }];
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest* _Nullable))completionHandler {
  (void)session;
  (void)response;
  std::lock_guard<std::mutex> lock(_mutex);
  auto found = _transfers.find(task.taskIdentifier);
  const bool follow = found != _transfers.end() &&
                      found->second.redirects < nutrition::kMaxRedirects &&
                      sameOrigin(task.originalRequest.URL, request.URL);
  if (follow) ++found->second.redirects;
  // Not following delivers the redirect answer itself: nothing reaches another origin.
  completionHandler(follow ? request : nil);
}

- (void)URLSession:(NSURLSession*)session
                    task:(NSURLSessionTask*)task
    didCompleteWithError:(NSError*)error {
  (void)session;
  Transfer transfer;
  {
    std::lock_guard<std::mutex> lock(_mutex);
    auto found = _transfers.find(task.taskIdentifier);
    if (found == _transfers.end()) return;
    transfer = std::move(found->second);
    _transfers.erase(found);
  }
  nutrition::HttpResponse answer;
  if (transfer.overCap) {
    answer.transportError =
        "the answer is larger than " + std::to_string(transfer.maxBytes) + " bytes";
  } else if (error != nil) {
    const char* reason = error.localizedDescription.UTF8String;
    answer.transportError = std::string(reason != nullptr ? reason : "no answer");
  } else {
    NSHTTPURLResponse* http = [task.response isKindOfClass:[NSHTTPURLResponse class]]
                                  ? static_cast<NSHTTPURLResponse*>(task.response)
                                  : nil;
    answer.status = http != nil ? static_cast<int>(http.statusCode) : 0;
    answer.body = std::move(transfer.body);
  }
  if (transfer.callback) transfer.callback(std::move(answer));
}

@end

namespace nutrition::ios {
namespace {

class SessionHttpClient final : public HttpClient {
 public:
  SessionHttpClient() {
    NSURLSessionConfiguration* configuration =
        [NSURLSessionConfiguration ephemeralSessionConfiguration];
    configuration.timeoutIntervalForRequest = 60;
    configuration.HTTPCookieStorage = nil;
    configuration.URLCache = nil;
    delegate_ = [[NKSessionDelegate alloc] init];
    NSOperationQueue* queue = [[NSOperationQueue alloc] init];
    queue.maxConcurrentOperationCount = 1;
    session_ = [NSURLSession sessionWithConfiguration:configuration
                                             delegate:delegate_
                                        delegateQueue:queue];
  }
  ~SessionHttpClient() override { [session_ invalidateAndCancel]; }

  void send(HttpRequest request, Callback callback) override {
    @autoreleasepool {
      NSURL* url = [NSURL URLWithString:@(request.url.c_str())];
      NSString* scheme = url.scheme.lowercaseString;
      if (url == nil || !([scheme isEqualToString:@"http"] || [scheme isEqualToString:@"https"])) {
        callback(HttpResponse{0, {}, "not an http or https URL"});
        return;
      }
      NSMutableURLRequest* urlRequest = [NSMutableURLRequest requestWithURL:url];
      urlRequest.HTTPMethod = @(request.method.c_str());
      urlRequest.timeoutInterval = std::chrono::duration<double>(request.timeout).count();
      for (const auto& [name, value] : request.headers)
        [urlRequest setValue:@(value.c_str()) forHTTPHeaderField:@(name.c_str())];
      if (request.body) {
        urlRequest.HTTPBody = [NSData dataWithBytes:request.body->data()
                                             length:request.body->size()];
      }
      NSURLSessionDataTask* task = [session_ dataTaskWithRequest:urlRequest];
      Transfer transfer;
      transfer.callback = std::move(callback);
      transfer.maxBytes = request.maxResponseBytes;
      [delegate_ addTask:task transfer:std::move(transfer)];
      [task resume];
    }
  }

 private:
  NKSessionDelegate* delegate_;
  NSURLSession* session_;
};

}  // namespace

std::shared_ptr<HttpClient> makeSessionHttpClient() {
  return std::make_shared<SessionHttpClient>();
}

}  // namespace nutrition::ios
