// HostSessionTest: the base of every fixture that runs on the host stand-in. Each test is one
// session of the host: it starts as the host starts, and its teardown checks that the test read
// every message box and everything the command line showed, then puts the host back as it
// started in one call.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "host/tarsa/standin/tarsa_standin.h"

class HostSessionTest : public ::testing::Test {
 protected:
  void TearDown() override {
    for (const CTarsaStandIn::ShownMessageBox& box : CTarsaStandIn::TakeMessageBoxes()) {
      ADD_FAILURE() << "message box not read: " << testing::PrintToString(box.m_text);
    }
    const std::wstring output = CTarsaStandIn::CommandLine().TakeOutput();
    EXPECT_EQ(output, L"") << "command-line output not read";
    CTarsaStandIn::Reset();
  }

  // The lines the user types at the command line's next prompts; Escape once they run out.
  void Type(std::deque<std::wstring> lines) {
    typed_ = std::move(lines);
    CTarsaStandIn::CommandLine().SetReader([this](const std::wstring&, std::wstring& line) {
      if (typed_.empty()) return false;
      line = typed_.front();
      typed_.pop_front();
      return true;
    });
  }

 private:
  std::deque<std::wstring> typed_;
};
