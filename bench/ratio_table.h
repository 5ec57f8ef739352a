// The table the benchmarks exist for: each row pairs an operation of the plug-in with the
// baseline that bounds it, two benchmarks run on the same document content at the same sizes.
// korvo_bench prints every row's ratio (operation time / baseline time) at each size, with the
// row's goal beside it, after the usual benchmark output.
#pragma once

#include <benchmark/benchmark.h>

// The sizes every row is measured at: 1,000, 10,000 and 100,000 objects.
inline void ModelSizes(benchmark::internal::Benchmark* b) {
  b->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

struct RatioRow {
  const char* m_what;      // as the README's table names the row
  const char* m_measured;  // the benchmark of the plug-in's operation
  const char* m_baseline;  // the benchmark of the baseline
  double m_goal;           // the highest acceptable ratio
};

// Adds a row; rows print in the order they were added. Returns the number of rows so far, so
// that a row can be added by a static initialiser.
int AddRatioRow(const RatioRow& row);

#define KORVO_RATIO_ROW_NAME2(line) korvo_ratio_row_##line
#define KORVO_RATIO_ROW_NAME(line) KORVO_RATIO_ROW_NAME2(line)
#define KORVO_RATIO_ROW(what, measured, baseline, goal)              \
  [[maybe_unused]] static const int KORVO_RATIO_ROW_NAME(__LINE__) = \
      AddRatioRow({what, measured, baseline, goal})
