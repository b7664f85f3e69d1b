#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// What a process holds at a moment.
struct Sample {
    long memory = 0; ///< In kB, without the pages of files, which the processes share.
    long descriptors = 0;
    long threads = 0;
};

/// All zero if there is no such process.
Sample ReadSample(pid_t process);

/// The one in the middle, the larger of two.
long Median(std::vector<long> values);
