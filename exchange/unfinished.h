#pragma once

#include <QTemporaryDir>
#include <string>

namespace exchange {

// What the command makes stands under its name whole, and never in the place of something else: throws with a
// sentence where anything stands at `path` already, a link to nothing as well.
void needNothingAt(const std::string& path);

// Something in the making, in a folder of its own beside its place and for its user alone; gone where it does
// not come to its end.
class Unfinished {
 public:
    // Throws where something stands at `target`, or nothing can be made beside it.
    explicit Unfinished(const std::string& target);

    // The file or folder that is to be made here.
    std::string path() const { return folder_.filePath(QStringLiteral("made")).toStdString(); }
    // Its folder, for what the making needs besides.
    std::string room() const { return folder_.path().toStdString(); }
    // It takes its name. Throws where something has come to stand there meanwhile.
    void finish();

 private:
    std::string target_;
    QTemporaryDir folder_;
};

}  // namespace exchange
