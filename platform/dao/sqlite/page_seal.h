#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct evp_mac_ctx_st;

namespace dao::driver {

using PageNumber = std::uint32_t;  // from 1, as the file counts

// How a page of an enciphered file lies on the disk: its content enciphered, and behind it the seal by which
// a page that was hurt, or belongs elsewhere, is told from one that was written there.
class PageSeal {
 public:
    explicit PageSeal(const std::string& key);  // as in OpenRequest
    ~PageSeal();
    PageSeal(const PageSeal&) = delete;
    PageSeal& operator=(const PageSeal&) = delete;

    // `raw` in both: the page as it lies, whole.
    bool isWhole(PageNumber number, std::string_view raw) const;
    // The plain bytes of a whole page without the cipher's reserve.
    std::string open(PageNumber number, std::string_view raw) const;

 private:
    std::string cipherKey_;
    std::unique_ptr<evp_mac_ctx_st, void (*)(evp_mac_ctx_st*)> seal_;
};

// Nothing but zeroes: what a file system leaves of a page that was never written, or is lost. The cipher
// takes it for a page that holds nothing, so whoever reads a file has to look.
bool isEmptyPage(std::string_view raw);
// The page that the library keeps free for its locks, the only one that may be empty.
bool isLockPage(PageNumber number);

}  // namespace dao::driver
