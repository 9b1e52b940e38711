#include "records/row_shelf.h"

#include "platform/system/files.h"
#include "platform/system/trap.h"

RowShelf::RowShelf(const QString& folder, std::size_t places, std::size_t memory)
    : places_(places),
      memory_(memory),
      file_(platform::nativePath(folder) + QStringLiteral("/ReportXXXXXX")) {}

void RowShelf::put(std::size_t place, std::string_view bytes) {
    places_[place].bytes += bytes;
    held_ += bytes.size();
    if (held_ > memory_) {
        writeAll();
    }
}

void RowShelf::writeAll() {
    if (!file_.isOpen() && !file_.open()) {
        fail();
    }
    for (Place& place : places_) {
        if (!place.bytes.empty()) {
            write(place);
        }
    }
    if (!file_.flush()) {
        fail();
    }
    held_ = 0;
}

void RowShelf::write(Place& place) {
    const auto size = static_cast<qint64>(place.bytes.size());
    if (!file_.seek(end_) || file_.write(place.bytes.data(), size) != size) {
        fail();
    }
    place.written.push_back({end_, place.bytes.size()});
    end_ += size;
    std::string().swap(place.bytes);  // an assignment would keep the room
}

std::string RowShelf::take(std::size_t place) {
    Place taken = std::move(places_[place]);
    places_[place] = {};
    held_ -= taken.bytes.size();
    std::string all;
    for (const Piece& piece : taken.written) {
        const std::size_t before = all.size();
        const auto size = static_cast<qint64>(piece.size);
        all.resize(before + piece.size);
        if (!file_.seek(piece.at) || file_.read(all.data() + before, size) != size) {
            fail();
        }
    }
    return all += taken.bytes;
}

void RowShelf::fail() const {
    const bool isFull = file_.error() == QFileDevice::ResourceError;
    throw platform::RunError(isFull ? 61 : 75,
                             isFull ? QStringLiteral("Disk full") : QStringLiteral("Path/File access error"));
}
