#include "paths/PathRecorder.h"

namespace {

PathRecorder *g_recorder = nullptr;

} // namespace

PathRecorder::PathRecorder() = default;

PathRecorder::~PathRecorder() = default;

PathRecorder *PathRecorder::GetInstance()
{
    InitRecorder();
    return g_recorder;
}

void PathRecorder::InitRecorder()
{
    if (!g_recorder)
        g_recorder = new PathRecorder;
}

void PathRecorder::UnInitRecorder()
{
    delete g_recorder;
    g_recorder = nullptr;
}
