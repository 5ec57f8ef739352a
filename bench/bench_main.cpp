// korvo_bench: runs every benchmark, then prints the ratio table. Arguments are Google
// Benchmark's (for example --benchmark_filter=Restore).
#include <benchmark/benchmark.h>

#include <malloc.h>

#include <climits>
#include <cstdio>
#include <map>
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

// Keeps the time of every run by benchmark and size, and shows the runs as usual.
class TimeKeeper : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      m_seconds[run.run_name.function_name][run.run_name.args] = Seconds(run);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  void PrintTable() const {
    std::printf("\n%-72s %8s %7s %5s\n", "What (operation / baseline)", "size", "ratio", "goal");
    for (const RatioRow& row : Rows()) {
      const auto measured = m_seconds.find(row.m_measured);
      const auto baseline = m_seconds.find(row.m_baseline);
      if (measured == m_seconds.end() || baseline == m_seconds.end()) continue;
      for (const auto& [size, seconds] : measured->second) {
        const auto base = baseline->second.find(size);
        if (base == baseline->second.end() || base->second <= 0) continue;
        const double ratio = seconds / base->second;
        std::printf("%-72s %8s %7.2f %5.2f%s\n", row.m_what, size.c_str(), ratio, row.m_goal,
                    ratio <= row.m_goal ? "" : "  over");
      }
    }
  }

 private:
  std::map<std::string, std::map<std::string, double>> m_seconds;
};

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
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  LoadStancePlugIn();
  TimeKeeper keeper;
  benchmark::RunSpecifiedBenchmarks(&keeper);
  keeper.PrintTable();
  benchmark::Shutdown();
  return 0;
}
