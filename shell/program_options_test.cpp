#include "shell/program_options.h"

#include <gtest/gtest.h>

namespace {

struct Parsed {
  bool ok;
  TsProgramOptions options;
  std::string error;
};

Parsed Parse(std::vector<std::string> arguments) {
  Parsed parsed;
  parsed.ok = TsParseProgramOptions(arguments, parsed.options, parsed.error);
  return parsed;
}

TEST(ProgramOptions, TakesAModelAndTheOptionsInAnyOrder) {
  const Parsed parsed =
      Parse({"--uuid-seed", "42", "model.tsm", "--script", "s.tsc", "--plugin", "/x/K.tsp"});
  ASSERT_TRUE(parsed.ok) << parsed.error;
  EXPECT_EQ(parsed.options.m_model, "model.tsm");
  EXPECT_EQ(parsed.options.m_script, "s.tsc");
  EXPECT_EQ(parsed.options.m_plugin, "/x/K.tsp");
  EXPECT_TRUE(parsed.options.m_seeded);
  EXPECT_EQ(parsed.options.m_seed, 42u);
  EXPECT_TRUE(Parse({}).ok);
}

TEST(ProgramOptions, RefusesWhatItCannotUseWithOneLine) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--frob"}, "unknown option --frob (tarsa --help lists the options)"},
      {{"--script"}, "the option --script needs a value"},
      {{"--uuid-seed", "-3"}, "--uuid-seed needs a whole number, not \"-3\""},
      {{"--uuid-seed", "12x"}, "--uuid-seed needs a whole number, not \"12x\""},
      {{"--uuid-seed", "99999999999999999999999"},
       "--uuid-seed needs a whole number, not \"99999999999999999999999\""},
      {{"a.tsm", "b.tsm"}, "one model file at a time: a.tsm or b.tsm"},
      {{"--no-plugin", "--plugin", "K.tsp"}, "--plugin and --no-plugin contradict each other"},
  };
  for (const auto& [arguments, error] : cases) {
    const Parsed parsed = Parse(arguments);
    EXPECT_FALSE(parsed.ok) << arguments[0];
    EXPECT_EQ(parsed.error, error);
  }
}

}  // namespace
