// Feeds the stored sort tags whatever the fuzzer thinks of.
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/system/sort_tag.h"
#include "platform/system/trap.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        const platform::SortTag tag = platform::splitSortTag(text);
        if (platform::splitSortTag(platform::makeSortTag(tag)) != tag) {
            std::abort();
        }
    } catch (const platform::RunError&) {
        // told
    }
    return 0;
}
