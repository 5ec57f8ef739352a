// korvo_bench: runs every benchmark of the ratio table, then prints the table. Arguments are
// Google Benchmark's, and --rounds=N (3 when not given); --benchmark_filter=REGEX keeps the
// benchmarks whose "name/size" it matches.
//
// Each benchmark at each size runs in a child process forked from the same parent, after the
// plug-in is loaded and before anything else is allocated, so that every run starts from the
// same heap. Run one after another in one process, a benchmark finds the heap as the benchmarks
// before it left it, and rows moved by a fifth from one run of the program to the next with
// the order of what ran before them. Every benchmark runs once in each of N rounds and keeps its
// fastest time: what the machine's other work adds to a run only ever slows it, and the rounds
// spread each pair's runs over the whole time the program runs.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"

namespace {

std::vector<RatioRow>& Rows() {
  static std::vector<RatioRow> rows;
  return rows;
}

// Every size a benchmark is registered at: the model sizes, and the panel's numbers of stances.
const int kSizes[] = {1000, 10000, 100000};

// The processor time of one iteration: unlike the wall-clock time, it does not count what other
// programs on the machine take.
double Seconds(const benchmark::BenchmarkReporter::Run& run) {
  const double per_unit[] = {1e-9, 1e-6, 1e-3, 1.0};  // ns, us, ms, s
  return run.GetAdjustedCPUTime() * per_unit[run.time_unit];
}

// In a child: shows the runs as usual, the machine's description and the column titles only
// for the first child, names in one width for every child, and writes "name size seconds" for
// each run to the parent's pipe.
class ChildReporter : public benchmark::ConsoleReporter {
 public:
  ChildReporter(FILE* to_parent, bool first)
      : ConsoleReporter(OO_None), m_to_parent(to_parent), m_first(first) {}

  bool ReportContext(const Context& context) override {
    if (!m_first) SetErrorStream(&m_unseen);
    const bool ok = ConsoleReporter::ReportContext(context);
    name_field_width_ = 36;
    return ok;
  }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      std::fprintf(m_to_parent, "%s %s %.17g\n", run.run_name.function_name.c_str(),
                   run.run_name.args.c_str(), Seconds(run));
    }
    ConsoleReporter::ReportRuns(runs);
  }

 protected:
  void PrintHeader(const Run& run) override {
    if (m_first) ConsoleReporter::PrintHeader(run);
  }

 private:
  FILE* m_to_parent;
  bool m_first;
  std::ostringstream m_unseen;
};

// The time of every run by benchmark and size, as the children report them.
using Times = std::map<std::string, std::map<std::string, double>>;

// Runs the benchmarks that `spec` selects in a child process and adds their times. False when the
// child could not be started.
bool RunInChild(const std::string& spec, bool first, Times& times) {
  int pipe_ends[2];
  if (pipe(pipe_ends) != 0) return false;
  std::fflush(stdout);
  const pid_t child = fork();
  if (child < 0) return false;
  if (child == 0) {
    close(pipe_ends[0]);
    FILE* to_parent = fdopen(pipe_ends[1], "w");
    ChildReporter reporter(to_parent, first);
    benchmark::RunSpecifiedBenchmarks(&reporter, spec);
    std::fflush(stdout);
    std::fclose(to_parent);
    _exit(0);
  }
  close(pipe_ends[1]);
  FILE* from_child = fdopen(pipe_ends[0], "r");
  char name[256];
  char size[64];
  double seconds = 0;
  while (std::fscanf(from_child, "%255s %63s %lf", name, size, &seconds) == 3) {
    auto [kept, added] = times[name].emplace(size, seconds);
    if (!added && seconds < kept->second) kept->second = seconds;
  }
  std::fclose(from_child);
  int status = 0;
  waitpid(child, &status, 0);
  return true;
}

// Takes --rounds=N out of the arguments: N, or `rounds` when it is not there; 0 when N is not a
// number from 1 to 100.
int TakeRounds(int& argc, char** argv, int rounds) {
  const std::string flag = "--rounds=";
  int kept = 1;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg.compare(0, flag.size(), flag) != 0) {
      argv[kept++] = argv[i];
      continue;
    }
    char* end = nullptr;
    const long value = std::strtol(arg.c_str() + flag.size(), &end, 10);
    rounds = *end == 0 && value >= 1 && value <= 100 ? static_cast<int>(value) : 0;
  }
  argc = kept;
  return rounds;
}

// Every benchmark the rows name, each once, in the order of the rows.
std::vector<std::string> BenchmarkNames() {
  std::vector<std::string> names;
  for (const RatioRow& row : Rows()) {
    for (const char* name : {row.m_measured, row.m_baseline}) {
      bool known = false;
      for (const std::string& seen : names) known = known || seen == name;
      if (!known) names.push_back(name);
    }
  }
  return names;
}

void PrintTable(const Times& times) {
  std::printf("\n%-72s %8s %7s %5s\n", "What (operation / baseline)", "size", "ratio", "goal");
  for (const RatioRow& row : Rows()) {
    const auto measured = times.find(row.m_measured);
    const auto baseline = times.find(row.m_baseline);
    if (measured == times.end() || baseline == times.end()) continue;
    for (const auto& [size, seconds] : measured->second) {
      const auto base = baseline->second.find(size);
      if (base == baseline->second.end() || base->second <= 0) continue;
      const double ratio = seconds / base->second;
      std::printf("%-72s %8s %7.2f %5.2f%s\n", row.m_what, size.c_str(), ratio, row.m_goal,
                  ratio <= row.m_goal ? "" : "  over");
    }
  }
}

}  // namespace

int AddRatioRow(const RatioRow& row) {
  Rows().push_back(row);
  return static_cast<int>(Rows().size());
}

int main(int argc, char** argv) {
  // The allocator keeps one policy for every benchmark: a freed block is merged when it is
  // freed, not queued for a merge that glibc runs inside whichever allocation next asks for a
  // large block (an operation would otherwise pay for what the untimed set-up before it freed);
  // and freed memory stays with the process, so that no timed side pays for faulting in again
  // pages that an untimed free gave back to the system.
  mallopt(M_MXFAST, 0);
  mallopt(M_TRIM_THRESHOLD, INT_MAX);
  mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
  const int rounds = TakeRounds(argc, argv, 3);
  if (rounds == 0) {
    std::fprintf(stderr, "korvo_bench: --rounds takes a number from 1 to 100\n");
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const std::string filter = benchmark::GetBenchmarkFilter();
  std::regex wanted;
  try {
    wanted.assign(filter.empty() || filter == "all" ? "." : filter);
  } catch (const std::regex_error&) {
    std::fprintf(stderr, "korvo_bench: the filter \"%s\" is not a regular expression\n",
                 filter.c_str());
    return 1;
  }
  LoadStancePlugIn();
  Times times;
  bool first = true;
  for (int round = 0; round < rounds; ++round) {
    for (const std::string& name : BenchmarkNames()) {
      for (const int size : kSizes) {
        const std::string instance = name + "/" + std::to_string(size);
        if (!std::regex_search(instance, wanted)) continue;
        if (!RunInChild("^" + instance + "$", first, times)) {
          std::fprintf(stderr, "korvo_bench: could not start a process for %s\n", instance.c_str());
          return 1;
        }
        first = false;
      }
    }
  }
  PrintTable(times);
  benchmark::Shutdown();
  return 0;
}
