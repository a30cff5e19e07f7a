#pragma once
// One sandbox backend for the whole test binary, started on first use on an ephemeral port
// and stopped after the last test, so that no test waits for a server to start or stop and
// every client is gone before it stops. Each test starts with no faults, an empty request log
// and the backend's clock at `kSandboxStart`; its members stay, so tests use ids of their own.

#include <atomic>

#include "sandbox/SandboxServer.h"

namespace nutrition::test {

inline constexpr double kSandboxStart = 1'800'000'000.0;

sandbox::SandboxServer& sharedSandbox();
// The clock of the shared sandbox and of the servers tests start themselves, in seconds since
// 1970; tests move it.
std::atomic<double>& sandboxNow();

// Resets the shared sandbox between tests (called by the test binary's main).
void resetSharedSandbox();
void stopSharedSandbox();

}  // namespace nutrition::test
