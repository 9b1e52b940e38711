#pragma once

#include <string>

namespace exchange {

// What the command makes stands under its name whole, and never in the place of something else: throws with a
// sentence where anything stands at `path` already, a link to nothing as well.
void needNothingAt(const std::string& path);

// A folder for what is in the making, for its user alone, and gone with the object. Those that killed
// processes have left under the same name go when the next one is made.
class MakingFolder {
 public:
    // At the path `stem`, with "-" and six letters behind it. Throws std::system_error, and with a sentence
    // where somebody takes away each one that is made.
    explicit MakingFolder(const std::string& stem);
    ~MakingFolder();
    MakingFolder(const MakingFolder&) = delete;
    MakingFolder& operator=(const MakingFolder&) = delete;

    const std::string& path() const { return path_; }

 private:
    bool makeAndHold(const std::string& stem);  // false: it was swept away at once
    void letGo() noexcept;

    std::string path_;
    int held_ = -1;  // open and locked: by that others see that its maker lives
};

// Something in the making, in a folder of its own beside its place; gone where it does not come to its end.
class Unfinished {
 public:
    // Throws where something stands at `target`, or nothing can be made beside it.
    explicit Unfinished(const std::string& target);

    // The file or folder that is to be made here.
    std::string path() const { return folder_.path() + "/made"; }
    // Its folder, for what the making needs besides.
    const std::string& room() const { return folder_.path(); }
    // It takes its name. Throws where something has come to stand there meanwhile.
    void finish();

 private:
    std::string target_;
    MakingFolder folder_;
};

}  // namespace exchange
