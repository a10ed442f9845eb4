#include "measure.h"

#include <malloc.h>
#include <time.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {
double Ms(clockid_t clock) {
    timespec ts;
    clock_gettime(clock, &ts);
    return double(ts.tv_sec) * 1000.0 + double(ts.tv_nsec) / 1e6;
}
}  // namespace

double WallMs() { return Ms(CLOCK_MONOTONIC); }

double ProcessCpuMs() { return Ms(CLOCK_PROCESS_CPUTIME_ID); }

double ResidentMiB() {
    FILE* status = std::fopen("/proc/self/status", "r");
    if (!status)
        return 0.0;
    char line[256];
    double kib = 0.0;
    while (std::fgets(line, sizeof line, status)) {
        if (std::strncmp(line, "VmRSS:", 6) == 0) {
            kib = std::atof(line + 6);
            break;
        }
    }
    std::fclose(status);
    return kib / 1024.0;
}

double HeapFreeMiB() {
    const struct mallinfo2 info = mallinfo2();
    return double(info.fordblks) / (1024.0 * 1024.0);
}

double Percentile(std::vector<double> values, double percent) {
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    // Nearest rank: the smallest value with at least `percent` of them at or below it.
    size_t rank = size_t(std::ceil(percent / 100.0 * double(values.size())));
    rank = std::clamp<size_t>(rank, 1, values.size());
    return values[rank - 1];
}

void CSceneTimer::Begin(const std::string& name) {
    name_ = name;
    times_.clear();
    wallStart_ = WallMs();
    cpuStart_ = ProcessCpuMs();
}

S_SceneResult CSceneTimer::End() {
    S_SceneResult result;
    result.name = name_;
    result.frames = int(times_.size());
    result.seconds = (WallMs() - wallStart_) / 1000.0;
    result.cpuMs = ProcessCpuMs() - cpuStart_;
    result.medianMs = Percentile(times_, 50.0);
    result.p95Ms = Percentile(times_, 95.0);
    result.maxMs = times_.empty() ? 0.0 : *std::max_element(times_.begin(), times_.end());
    return result;
}
