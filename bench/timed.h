// Timed(work): runs `work`, the part of a benchmark's round that its time measures, in a call of
// its own, so that scripts/bench_instructions.sh can count, under callgrind, the instructions run
// inside Timed alone and leave the untimed set-up of each round out.
#pragma once

template <class Work>
[[gnu::noinline]] void Timed(Work&& work) {
  work();
}
