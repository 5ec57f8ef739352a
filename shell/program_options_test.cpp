#include "shell/program_options.h"

#include <gtest/gtest.h>

#include <tuple>

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

TEST(ProgramOptions, TakesAModelAndTheOptionsInAnyOrderAndRefusesWhatItCannotUseWithOneLine) {
  const Parsed parsed = Parse({"--uuid-seed", "42", "model.tsm", "--script", "s.tsc", "--plugin",
                               "/x/K.tsp", "--undo-limit", "64"});
  ASSERT_TRUE(parsed.ok) << parsed.error;
  const TsProgramOptions& o = parsed.options;
  EXPECT_EQ(std::tie(o.m_model, o.m_script, o.m_plugin, o.m_seeded, o.m_seed, o.m_undo_limit_mb),
            std::make_tuple("model.tsm", "s.tsc", "/x/K.tsp", true, 42ull, 64ull));
  EXPECT_EQ(Parse({}).options.m_undo_limit_mb, 256u);

  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--frob"}, "unknown option --frob (tarsa --help lists the options)"},
      {{"--script"}, "the option --script needs a value"},
      {{"--uuid-seed", "-3"}, "--uuid-seed needs a whole number, not \"-3\""},
      {{"--uuid-seed", "12x"}, "--uuid-seed needs a whole number, not \"12x\""},
      {{"--uuid-seed", "99999999999999999999999"},
       "--uuid-seed needs a whole number, not \"99999999999999999999999\""},
      {{"--undo-limit", "lots"}, "--undo-limit needs a whole number, not \"lots\""},
      {{"--undo-limit", "99999999"}, "--undo-limit takes at most 16777216 megabytes"},
      {{"a.tsm", "b.tsm"}, "one model file at a time: a.tsm or b.tsm"},
      {{"--no-plugin", "--plugin", "K.tsp"}, "--plugin and --no-plugin contradict each other"},
  };
  for (const auto& [arguments, error] : cases) {
    const Parsed refused = Parse(arguments);
    EXPECT_FALSE(refused.ok) << arguments[0];
    EXPECT_EQ(refused.error, error);
  }
}

}  // namespace
