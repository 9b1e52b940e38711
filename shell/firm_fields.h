#pragma once

#include <QString>
#include <array>
#include <cstddef>

class QGroupBox;
class QLineEdit;
class QWidget;
namespace platform {
class Trap;
}

// The firm's data in the options: what every printed document says of the shop. It is stored scrambled.
class FirmFields {
 public:
    QWidget* build(QWidget* window);  // the page; the fields are the window's
    void load();
    void keep(platform::Trap& step) const;

 private:
    static constexpr std::size_t kCount = 13;
    QGroupBox* buildFrame(const QString& title, std::size_t from, std::size_t to, QWidget* window);
    QLineEdit* makeField(std::size_t index, QWidget* frame);

    std::array<QLineEdit*, kCount> fields_{};  // Text2
};
