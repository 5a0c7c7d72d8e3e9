#include "paths/PathRecorder.h"

#include <gtest/gtest.h>

TEST(PathRecorder, ForgetsItsFoldersWhenItIsReleased)
{
    PathRecorder::InitRecorder();
    PathRecorder *recorder = PathRecorder::GetInstance();
    recorder->m_imageDir = recorder->m_documentDir = recorder->m_mixedDir = recorder->m_textDir = "/pictures";
    PathRecorder::InitRecorder();
    EXPECT_EQ(PathRecorder::GetInstance()->m_imageDir, "/pictures") << "initialised once";

    PathRecorder::UnInitRecorder();
    PathRecorder::UnInitRecorder();
    recorder = PathRecorder::GetInstance();
    EXPECT_EQ(recorder->m_imageDir + recorder->m_documentDir + recorder->m_mixedDir + recorder->m_textDir, "");
    PathRecorder::UnInitRecorder();
}
