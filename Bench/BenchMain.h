#pragma once

#include "BenchResults.h"

#include <functional>
#include <string>
#include <vector>

/** A figure of a run and what it should be. */
struct Aim
{
    enum class Bound
    {
        AtMost,
        AtLeast
    };

    std::string what;
    double value; ///< NaN: not measured in this run
    Bound bound;
    double limit;
};

using Aims = std::function<std::vector<Aim>(const BenchResults&)>;

/**
 * What main() of a benchmark does: runs its rows and prints them, then its aims as a table, which
 * it also adds to the file that the environment variable KD_BENCH_AIMS names.
 * @return the exit status; an aim that is missed is no failure.
 */
int runBenchmarks(int argc, char** argv, const Aims& aims);
