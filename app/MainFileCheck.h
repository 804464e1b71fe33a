#pragma once

#include "platform/FileTree.h"
#include "runtime/IniCheck.h"

namespace nordkeep {

/// What only a copy as a whole can say of its main settings file: the files, folders and devices that it
/// names, and the few values with rules of their own.
class MainFileCheck {
 public:
    MainFileCheck(const IniLines& lines, const FileTree& dataFolder, const FileTree& programFolder,
                  FileFindings& findings)
        : lines_(lines), dataFolder_(dataFolder), programFolder_(programFolder), findings_(findings) {}

    void Run();

 private:
    void CheckLanguage();
    void CheckColors();
    void CheckOddNumbers();
    void CheckFiles();
    void CheckFile(TextView key, TextView path, TextView section = "General");
    void CheckCertificates();
    void CheckDevice(TextView key, TextView line, TextView device);
    void CheckDevices();
    int LineOf(TextView key) const { return lines_.LineOf("General", key); }
    Text Value(TextView key) const { return Text(TrimBlanks(lines_.ValueOf("General", key))); }

    const IniLines& lines_;
    const FileTree& dataFolder_;
    const FileTree& programFolder_;
    FileFindings& findings_;
};

}  // namespace nordkeep
