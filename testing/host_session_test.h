// HostSessionTest: the base of every fixture that runs on the host stand-in. Each test is one
// session of the host: it starts as the host starts, and its teardown checks that the test read
// every message box and everything the command line showed, then puts the host back as it
// started in one call.
#pragma once

#include <gtest/gtest.h>

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
};
