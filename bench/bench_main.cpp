// korvo_bench: runs every benchmark of the ratio table, then prints the table. Arguments are
// Google Benchmark's, and --rounds=N (3 when not given); --benchmark_filter=REGEX keeps the
// benchmarks whose "name/size" it matches.
//
// Each benchmark at each size runs in a child process forked from the same parent once the
// plug-in is loaded, so that every run starts from nearly the same heap (the parent adds only the
// times it keeps). Run one after another in one process, a benchmark found the heap as the
// benchmarks before it left it, and rows moved by a fifth from one run of the program to the
// next with the order of what ran before them. A child that fails is reported, its rows are
// missing from the table, and the program exits with 1. Every benchmark runs once in each of N
// rounds and keeps its fastest time: what the machine's other work adds to a run only ever slows
// it, and the rounds spread each pair's runs over the whole time the program runs.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
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
      // A memory benchmark reports bytes, which the table divides as it divides times.
      const auto bytes = run.counters.find("bytes");
      std::fprintf(m_to_parent, "%s %s %.17g\n", run.run_name.function_name.c_str(),
                   run.run_name.args.c_str(),
                   bytes != run.counters.end() ? double(bytes->second) : Seconds(run));
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

// Runs `work` in a child process forked from this one and collects what it writes to the stream
// it is given. True when the child ran and exited with status 0; false, with `failure` saying
// how it ended, otherwise.
bool RunInChild(const std::function<void(FILE*)>& work, std::string& output, std::string& failure) {
  int pipe_ends[2];
  if (pipe(pipe_ends) != 0) {
    failure = "could not make a pipe";
    return false;
  }
  std::fflush(stdout);
  std::cout.flush();
  const pid_t child = fork();
  if (child < 0) {
    close(pipe_ends[0]);
    close(pipe_ends[1]);
    failure = "could not start a process";
    return false;
  }
  if (child == 0) {
    close(pipe_ends[0]);
    FILE* to_parent = fdopen(pipe_ends[1], "w");
    if (to_parent == nullptr) _exit(2);
    work(to_parent);
    std::fflush(stdout);
    std::cout.flush();
    _exit(std::fclose(to_parent) == 0 ? 0 : 2);
  }
  close(pipe_ends[1]);
  char buffer[4096];
  for (ssize_t got; (got = read(pipe_ends[0], buffer, sizeof buffer)) != 0;) {
    if (got > 0) output.append(buffer, static_cast<size_t>(got));
    if (got < 0 && errno != EINTR) break;
  }
  close(pipe_ends[0]);
  int status = 0;
  if (waitpid(child, &status, 0) != child) {
    failure = "was lost";
    return false;
  }
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return true;
  failure = WIFSIGNALED(status) ? "ended by signal " + std::to_string(WTERMSIG(status))
                                : "ended with status " + std::to_string(WEXITSTATUS(status));
  return false;
}

// Every registered benchmark at every size it is registered at ("BM_Restore/1000"), as the
// library lists them, in a child, so that listing leaves nothing behind here. Empty when the
// listing failed.
std::vector<std::string> RegisteredInstances() {
  std::string listed;
  std::string failure;
  const bool listed_all = RunInChild(
      [](FILE* to_parent) {
        dup2(fileno(to_parent), STDOUT_FILENO);
        char program[] = "korvo_bench";
        char list[] = "--benchmark_list_tests=true";
        char* arguments[] = {program, list, nullptr};
        int count = 2;
        benchmark::Initialize(&count, arguments);
        benchmark::RunSpecifiedBenchmarks(std::string("."));
      },
      listed, failure);
  std::vector<std::string> instances;
  std::istringstream lines(listed);
  for (std::string line; listed_all && std::getline(lines, line);) {
    if (!line.empty()) instances.push_back(line);
  }
  return instances;
}

// Runs one benchmark instance in a child and keeps, for each of its runs, the fastest time so
// far. True when the child finished; false, with `failure` saying how it ended, otherwise.
bool RunInstance(const std::string& instance, bool first, Times& times, std::string& failure) {
  std::string reported;
  const bool finished = RunInChild(
      [&instance, first](FILE* to_parent) {
        ChildReporter reporter(to_parent, first);
        benchmark::RunSpecifiedBenchmarks(&reporter, "^" + instance + "$");
      },
      reported, failure);
  std::istringstream lines(reported);
  std::string name;
  std::string size;
  double seconds = 0;
  while (lines >> name >> size >> seconds) {
    auto [kept, added] = times[name].emplace(size, seconds);
    if (!added && seconds < kept->second) kept->second = seconds;
  }
  return finished;
}

// True when an argument starts with `flag`.
bool HasFlag(int argc, char** argv, const char* flag) {
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], flag, std::strlen(flag)) == 0) return true;
  }
  return false;
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

// The registered instances of the benchmarks the rows name whose "name/size" `wanted` matches,
// in the order of the rows, each once.
std::vector<std::string> SelectedInstances(const std::regex& wanted) {
  const std::vector<std::string> registered = RegisteredInstances();
  std::vector<std::string> selected;
  for (const RatioRow& row : Rows()) {
    for (const std::string name : {row.m_measured, row.m_baseline}) {
      for (const std::string& instance : registered) {
        if (instance.compare(0, name.size() + 1, name + "/") != 0) continue;
        if (!std::regex_search(instance, wanted)) continue;
        if (std::find(selected.begin(), selected.end(), instance) == selected.end()) {
          selected.push_back(instance);
        }
      }
    }
  }
  return selected;
}

void PrintTable(const Times& times) {
  std::printf("\n%-84s %8s %7s %5s\n", "What (operation / baseline)", "size", "ratio", "goal");
  for (const RatioRow& row : Rows()) {
    const auto measured = times.find(row.m_measured);
    const auto baseline = times.find(row.m_baseline);
    if (measured == times.end() || baseline == times.end()) continue;
    for (const auto& [size, seconds] : measured->second) {
      const auto base = baseline->second.find(size);
      if (base == baseline->second.end() || base->second <= 0) continue;
      const double ratio = seconds / base->second;
      std::printf("%-84s %8s %7.2f %5.2f%s\n", row.m_what, size.c_str(), ratio, row.m_goal,
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
  // The allocator keeps one policy for every benchmark: a freed block (but the few of each size
  // the thread's cache holds) is merged when it is freed, not queued for a merge that glibc runs
  // inside whichever allocation next asks for a large block (an operation would otherwise pay for
  // what the untimed set-up before it freed); and freed memory stays with the process, but for
  // blocks of 32 MB or more, so that no timed side pays for faulting in again pages that an
  // untimed free gave back to the system.
  mallopt(M_MXFAST, 0);
  mallopt(M_TRIM_THRESHOLD, INT_MAX);
  mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024);
  if (HasFlag(argc, argv, "--benchmark_list_tests")) {
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
  }
  if (HasFlag(argc, argv, "--benchmark_out")) {
    std::fprintf(stderr,
                 "korvo_bench: --benchmark_out is not supported: each benchmark runs in "
                 "a process of its own\n");
    return 1;
  }
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
  const std::vector<std::string> instances = SelectedInstances(wanted);
  if (instances.empty()) {
    std::fprintf(stderr, "korvo_bench: no benchmark of the table matches \"%s\"\n", filter.c_str());
    return 1;
  }
  LoadStancePlugIn();
  Times times;
  int failed = 0;
  for (int round = 0; round < rounds; ++round) {
    for (const std::string& instance : instances) {
      std::string failure;
      if (RunInstance(instance, round == 0 && instance == instances.front(), times, failure)) {
        continue;
      }
      std::fprintf(stderr, "korvo_bench: %s %s\n", instance.c_str(), failure.c_str());
      ++failed;
    }
  }
  PrintTable(times);
  benchmark::Shutdown();
  return failed == 0 ? 0 : 1;
}
