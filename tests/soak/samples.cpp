#include "soak/samples.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>

Sample ReadSample(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    Sample sample;
    std::ifstream status(folder + "/status");
    for (std::string key; status >> key; status.ignore(std::numeric_limits<std::streamsize>::max(), '\n')) {
        if (key == "RssAnon:") {
            status >> sample.memory;
        } else if (key == "Threads:") {
            status >> sample.threads;
        }
    }
    std::error_code error;
    const std::filesystem::directory_iterator descriptors(folder + "/fd", error);
    sample.descriptors = std::distance(begin(descriptors), end(descriptors));
    return sample;
}

long Median(std::vector<long> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}
