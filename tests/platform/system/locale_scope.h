#pragma once

#include <QLocale>

// The user's locale for the length of one test.
class LocaleScope {
 public:
    explicit LocaleScope(const QLocale& locale) { QLocale::setDefault(locale); }
    explicit LocaleScope(const char* name) : LocaleScope(QLocale(QString::fromLatin1(name))) {}
    ~LocaleScope() { QLocale::setDefault(before_); }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;

 private:
    QLocale before_;
};
