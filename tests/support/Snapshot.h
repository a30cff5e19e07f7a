#pragma once
// Compares a rendered screen with its reviewed file under tests/snapshots/. A missing or
// different file fails the test; with NUTRITION_RECORD_SNAPSHOTS=1 in the environment the file
// is written instead (and the test still fails, so a recording run never passes silently).
//
//   expectSnapshot("AyunoViewController_9h", renderText(*screen));

#include <string>

namespace nutrition::test {

void expectSnapshot(const std::string& name, const std::string& rendered);

}  // namespace nutrition::test
