#pragma once
// HTTP over one NSURLSession: 60 s time-outs by default, bodies capped at the request's limit
// while they arrive, redirects followed only within the request's origin.

#include <memory>

#include "platform/HttpClient.h"

namespace nutrition::ios {

std::shared_ptr<HttpClient> makeSessionHttpClient();

}  // namespace nutrition::ios
