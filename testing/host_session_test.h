// HostSessionTest: the base of every fixture that runs on the host stand-in. Each test is one
// session of the host: it starts as the host starts, and its teardown checks that the test read
// every message box and everything the command line showed, then puts the host back as it
// started in one call.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/tarsa/tarsa_doc.h"

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

// A session with one new document, and a verb that adds named objects to it with ids numbered
// from 1 in the order of adding, so that what a test prints names the same ids every run.
class HostDocumentTest : public HostSessionTest {
 protected:
  void SetUp() override { doc_ = CTarsaStandIn::NewDocument(); }

  // Adds `geometry` (the document takes it) as an object named `name`; the document owns the
  // object returned.
  const CTarsaObject* Add(ZK_Geometry* geometry, const wchar_t* name,
                          TarsaObjectMode mode = TarsaObjectMode::normal) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    attributes.m_mode = mode;
    const std::string id = "00000000-0000-4000-8000-" + Digits(++added_, 12);
    attributes.m_uuid = ZK_UuidFromString(id.c_str());
    auto* object = new CTarsaObject(geometry, attributes);
    EXPECT_TRUE(doc_->AddObject(object));
    return object;
  }

  CTarsaDoc* doc_ = nullptr;

 private:
  static std::string Digits(int number, size_t width) {
    const std::string digits = std::to_string(number);
    return std::string(width - digits.size(), '0') + digits;
  }

  int added_ = 0;
};
