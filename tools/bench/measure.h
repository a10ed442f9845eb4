// What the benchmark measures and how it is summed up: frame times of a
// scene, the process's processor time, and its resident memory.
#pragma once

#include <string>
#include <vector>

double WallMs();        // a monotonic clock, milliseconds
double ProcessCpuMs();  // processor time of every thread of the process
double ResidentMiB();   // VmRSS of this process, 0 when unknown
// Memory the C heap holds free (released by the program, kept by the
// allocator): resident when it was touched, though nothing uses it.
double HeapFreeMiB();

struct S_SceneResult {
    std::string name;
    int frames = 0;
    double seconds = 0.0;  // wall time of all its frames
    double cpuMs = 0.0;    // processor time of all its frames
    double medianMs = 0.0, p95Ms = 0.0, maxMs = 0.0;
    double Fps() const { return seconds > 0.0 ? frames / seconds : 0.0; }
    double CpuPerFrame() const { return frames > 0 ? cpuMs / frames : 0.0; }
};

// Times a run of frames: Begin, then Frame around each frame, then End.
class CSceneTimer {
public:
    void Begin(const std::string& name);
    void FrameStart() { frameStart_ = WallMs(); }
    void FrameEnd() { times_.push_back(WallMs() - frameStart_); }
    S_SceneResult End();

private:
    std::string name_;
    std::vector<double> times_;
    double frameStart_ = 0.0, wallStart_ = 0.0, cpuStart_ = 0.0;
};

// The nearest-rank percentile (0..100) of unsorted values; 0 for none.
double Percentile(std::vector<double> values, double percent);
