#include "shell/program_options.h"

#include <cerrno>
#include <cstdlib>

const char kTsUsage[] =
    "Usage: tarsa [options] [MODEL.tsm]\n"
    "Starts the modeller on a model file, or on an empty model, with the stance plug-in loaded.\n"
    "With a display it opens its window; on a terminal it reads commands with line editing;\n"
    "otherwise it runs the command lines it is given and prints what a person would see.\n"
    "It exits with 1 when a command failed.\n"
    "  --script FILE   run the command lines of FILE, then exit\n"
    "  --picture FILE  after the commands, write a PNG picture of the window to FILE\n"
    "  --plugin PATH   load the plug-in module at PATH (default: Korvo.tsp beside the program)\n"
    "  --no-plugin     start without any plug-in\n"
    "  --uuid-seed N   make the ids of new objects and stances the same in every run\n"
    "  --undo-limit MB the memory undo may keep before it drops its oldest steps (256)\n"
    "  --help          show this text\n";

namespace {

// The value of an option that takes a whole number: false with a message for anything else.
bool ReadWholeNumber(const std::string& option, const std::string& value,
                     unsigned long long& number, std::string& error) {
  char* end = nullptr;
  errno = 0;
  number = std::strtoull(value.c_str(), &end, 10);
  if (value.empty() || *end != 0 || errno != 0 || value[0] == '-') {
    error = option + " needs a whole number, not \"" + value + "\"";
    return false;
  }
  return true;
}

}  // namespace

bool TsParseProgramOptions(const std::vector<std::string>& arguments, TsProgramOptions& options,
                           std::string& error) {
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    const bool takes_value = argument == "--script" || argument == "--plugin" ||
                             argument == "--picture" || argument == "--uuid-seed" ||
                             argument == "--undo-limit";
    if (takes_value && i + 1 == arguments.size()) {
      error = "the option " + argument + " needs a value";
      return false;
    }
    if (argument == "--script") {
      options.m_script = arguments[++i];
    } else if (argument == "--picture") {
      options.m_picture = arguments[++i];
    } else if (argument == "--plugin") {
      options.m_plugin = arguments[++i];
    } else if (argument == "--uuid-seed") {
      if (!ReadWholeNumber(argument, arguments[++i], options.m_seed, error)) return false;
      options.m_seeded = true;
    } else if (argument == "--undo-limit") {
      if (!ReadWholeNumber(argument, arguments[++i], options.m_undo_limit_mb, error)) return false;
      if (options.m_undo_limit_mb > (1ull << 24)) {  // 16 TB: more than any machine holds
        error = "--undo-limit takes at most 16777216 megabytes";
        return false;
      }
    } else if (argument == "--no-plugin") {
      options.m_no_plugin = true;
    } else if (argument == "--help" || argument == "-h") {
      options.m_help = true;
    } else if (argument.size() > 1 && argument[0] == '-') {
      error = "unknown option " + argument + " (tarsa --help lists the options)";
      return false;
    } else if (!options.m_model.empty()) {
      error = "one model file at a time: " + options.m_model + " or " + argument;
      return false;
    } else {
      options.m_model = argument;
    }
  }
  if (options.m_no_plugin && !options.m_plugin.empty()) {
    error = "--plugin and --no-plugin contradict each other";
    return false;
  }
  return true;
}
