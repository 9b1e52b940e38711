#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace dao::driver {

using PageNumber = std::uint32_t;  // from 1, as the file counts

// The pages of an enciphered file, each for itself, without the store: a page that the store stumbles over
// must not keep the others from being read. The file must not be open in this process.
class PageFile {
 public:
    // `key`: as in OpenRequest. Throws dao::Error if the file cannot be read at all.
    PageFile(const std::string& path, const std::string& key);
    ~PageFile();
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    enum class State { Whole, Empty, Broken, Missing };  // Empty: nothing but zeroes
    State state(PageNumber page);
    PageNumber size() const { return size_; }          // whole pages in the file
    PageNumber expected() const { return expected_; }  // pages it ought to have; needs a whole first page
    // The page's plain bytes without the cipher's reserve; nothing where it is not whole. Lives until the
    // next call for many others.
    std::string_view page(PageNumber number);

 private:
    bool readRaw(PageNumber number, std::string& raw) const;
    bool isSealed(PageNumber number, const std::string& raw) const;
    std::string decrypt(PageNumber number, const std::string& raw) const;

    int fd_ = -1;
    std::string cipherKey_;
    std::string sealKey_;
    PageNumber size_ = 0;
    PageNumber expected_ = 0;
    std::map<PageNumber, std::string> cache_;
};

// Numbers as the pages hold them.
std::uint32_t bigEndian(std::string_view bytes, std::size_t at, int size);

}  // namespace dao::driver
