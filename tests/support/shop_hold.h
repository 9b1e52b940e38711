#pragma once

#include <memory>
#include <string>

namespace tests {

// A workstation that keeps a shop's records to itself for as long as this lives: the others cannot write, and
// where it is just writing out what it has, not read either. For a process of its own: see SecondProcess.
class ShopHold {
 public:
    enum class Against { Writers, Readers };

    // `path`: the shop's file, or its signpost.
    ShopHold(const std::string& path, Against against);
    ShopHold(const ShopHold&) = delete;
    ShopHold& operator=(const ShopHold&) = delete;
    ~ShopHold();

 private:
    class Hold;
    class FileHold;
    class FileBytes;
    class ServerHold;
    std::unique_ptr<Hold> hold_;
};

}  // namespace tests
