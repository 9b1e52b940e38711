#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <QByteArray>
#include <QFileInfo>
#include <QString>

// How often a file is written, or another one put into its place, from the moment when this is made.
class FileWrites {
 public:
    explicit FileWrites(const QString& file) : name_(QFileInfo(file).fileName().toUtf8()) {
        inotify_add_watch(events_, QFileInfo(file).path().toUtf8().constData(), IN_MODIFY | IN_MOVED_TO);
    }
    ~FileWrites() { close(events_); }
    FileWrites(const FileWrites&) = delete;
    FileWrites& operator=(const FileWrites&) = delete;

    // Since the last asking.
    int count() {
        int found = 0;
        alignas(inotify_event) char buffer[16384];
        for (ssize_t size = 0; (size = read(events_, buffer, sizeof buffer)) > 0;) {
            for (ssize_t at = 0; at < size;) {
                const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
                found += name_ == event->name ? 1 : 0;
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
        }
        return found;
    }

 private:
    int events_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    QByteArray name_;
};
