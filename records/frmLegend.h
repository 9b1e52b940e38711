#pragma once

#include <QDialog>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <functional>

// What the four marks of the services list mean. Its caller calls Display and lets the window go.
class frmLegend : public QDialog {
    Q_OBJECT
 public:
    explicit frmLegend(QWidget* parent = nullptr);
    ~frmLegend() override;

    // Modal; returns when it is hidden. Where a picture is missing the reason is shown in its place, and the
    // window is not.
    void Display();
    void Unload();  // stores the place; once. The destructor does it otherwise.

    static constexpr int kRows = 4;
    std::array<QLabel*, kRows> Image1{};
    std::array<QLabel*, kRows> Label1{};
    QPushButton* Command1 = nullptr;

    // What tests put in the place of the real pictures.
    std::function<QIcon(const QString& name)> pictures;

 private:
    void build();
    void setUp();
    void load();

    bool loaded_ = false;  // the place has been read
};
