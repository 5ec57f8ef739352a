// The command line of the program `tarsa` itself (not the host's command line inside it).
#pragma once

#include <string>
#include <vector>

struct TsProgramOptions {
  std::string m_model;       // the model file to open; empty: an empty model
  std::string m_script;      // --script FILE; empty: the terminal or standard input
  std::string m_plugin;      // --plugin PATH; empty: Korvo.tsp beside the program
  std::string m_picture;     // --picture FILE.png: a picture of the window, written at the end
  bool m_no_plugin = false;  // --no-plugin
  bool m_help = false;       // --help
  bool m_seeded = false;     // --uuid-seed N given
  unsigned long long m_seed = 0;
  unsigned long long m_undo_limit_mb = 256;  // --undo-limit MB: the memory undo may keep
};

// What --help prints.
extern const char kTsUsage[];

// Reads the program's arguments (without the program name): false with one line in `error`
// for an unknown option, an option without its value, a bad number, or more than one model.
bool TsParseProgramOptions(const std::vector<std::string>& arguments, TsProgramOptions& options,
                           std::string& error);
