#include "shell/script_input.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "shell/script_front_end.h"
#include "testing/host_session_test.h"

namespace {

class ScriptInputTest : public HostSessionTest {
 protected:
  // A script file of the test's own.
  std::string Write(const std::string& name, const std::string& text) {
    const std::string path = testing::TempDir() + name;
    std::ofstream(path) << text;
    return path;
  }
  bool Read(std::wstring& line) { return input_.Read(L"Command:", line, user_); }
  std::vector<std::wstring> ReadAll() {
    std::vector<std::wstring> lines;
    std::wstring line;
    while (Read(line)) lines.push_back(line);
    return lines;
  }
  std::istringstream typed_{"# a comment\nBox\r\n   # indented comment\n\nList\n"};
  TsScriptFrontEnd user_{typed_, [](const std::wstring&) {}};
  CTarsaScriptInput input_;
};

TEST_F(ScriptInputTest, SkipsCommentsAndRunsPushedFilesBeforeTheRestAndRefusesAFolder) {
  std::wstring line;
  ASSERT_TRUE(Read(line));
  EXPECT_EQ(line, L"Box");
  std::wstring error;
  ASSERT_TRUE(input_.PushScriptFile(Write("outer.tsc", "Point\n# note\nMove\n"), error));
  ASSERT_TRUE(Read(line));
  EXPECT_EQ(line, L"Point");
  ASSERT_TRUE(input_.PushScriptFile(Write("inner.tsc", "Copy"), error));
  EXPECT_EQ(ReadAll(), (std::vector<std::wstring>{L"Copy", L"Move", L"", L"List"}));

  // A missing script: the transcripts mistakes and unreadable_script.
  EXPECT_FALSE(input_.PushScriptFile(testing::TempDir(), error));
  EXPECT_EQ(error,
            L"Cannot read the script " + ZK_wString::FromUtf8(testing::TempDir()).Text() + L".");
}

}  // namespace
