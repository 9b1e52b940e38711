#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/sqlite/page_seal.h"

namespace dao::driver {

// Where the pages of a file are read as they lie.
class PageSource {
 public:
    PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;
    virtual ~PageSource() = default;

    virtual std::int64_t bytes() const = 0;  // of the file
    // False where that page cannot be read in full.
    virtual bool read(PageNumber number, std::string& raw) = 0;
};

// The file must not be open in this process: closing another handle on it would let go of its locks. Throws
// dao::Error if it cannot be read at all.
std::unique_ptr<PageSource> pagesOfClosed(const std::string& path);
std::int64_t placeOf(PageNumber number);  // its first byte in the file

// The pages of an enciphered file, each for itself, without the store: a page that the store stumbles over
// must not keep the others from being read. Each page is read only until breakOff(): errCancelled then.
class PageFile {
 public:
    // `key`: as in OpenRequest.
    PageFile(std::unique_ptr<PageSource> source, const std::string& key);
    ~PageFile();
    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    // Whether the page is there as it was written.
    bool isWhole(PageNumber page);
    // Whether every page is, and none is missing.
    bool isAllWhole();
    PageNumber size() const { return size_; }          // whole pages in the file
    PageNumber expected() const { return expected_; }  // pages it ought to have; needs a whole first page
    // The page's plain bytes without the cipher's reserve; nothing where it is not whole. Lives until the
    // next call for many others.
    std::string_view page(PageNumber number);

 private:
    std::unique_ptr<PageSource> source_;
    PageSeal seal_;
    PageNumber size_ = 0;
    PageNumber expected_ = 0;
    std::string raw_;
    std::map<PageNumber, std::string> cache_;
};

// Numbers as the pages hold them.
std::uint32_t bigEndian(std::string_view bytes, std::size_t at, int size);

}  // namespace dao::driver
