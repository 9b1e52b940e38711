#pragma once

#include <QString>
#include <string>

namespace data {

// What the backup of a server's shop was made from, written down in a file beside it. It counts for that very
// backup alone: one that was replaced, changed, damaged or brought from elsewhere is nobody's.
class BackupNote {
 public:
    explicit BackupNote(QString backup) : backup_(std::move(backup)) {}

    // The state (dao::ShopView) that the backup, as it lies there now, is a copy of; empty: not known.
    std::string state() const;
    // For the backup as it lies there now. Throws platform::RunError.
    void keep(const std::string& state) const;

 private:
    QString path() const { return backup_ + QStringLiteral(".note"); }

    QString backup_;
};

}  // namespace data
