#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/system/files.h"
#include "platform/system/settings_store.h"

// A program folder and settings of the test's own, empty at its start; those from before come back after it.
class OwnFolderFixture : public ::testing::Test {
 protected:
    void SetUp() override {
        ASSERT_TRUE(folder_.isValid());
        settingsBefore_ = QFileInfo(platform::settingsFile("x")).path();
        programBefore_ = platform::programFolder();
        platform::setSettingsFolder(folder_.path());
        platform::setProgramFolder(folder_.path());
    }
    void TearDown() override {
        platform::setSettingsFolder(settingsBefore_);
        platform::setProgramFolder(programBefore_);
    }

    QTemporaryDir folder_;

 private:
    QString settingsBefore_, programBefore_;
};
