#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <array>

#include "platform/controls/boxes.h"
#include "platform/controls/list_view.h"

// The products that could not be given back to stock, with the reason as a mark beside each, and a text file
// of them. Its caller adds the rows, calls Display and lets the window go.
class frmTrebovanjeError : public QDialog {
    Q_OBJECT
 public:
    explicit frmTrebovanjeError(QWidget* parent = nullptr);
    ~frmTrebovanjeError() override;

    // `key` must not be in the list yet. Price in the unit on screen (dinars or euro). Code 1: at the end,
    // with mark 2; any other: at the top, with mark 1. A failure is told in a box.
    void AddListItem(const QString& key, const QString& manufacturer, const QString& group,
                     const QString& name, const QString& description, float price, float quantity,
                     qint32 code);
    void Display();  // modal; returns when it is hidden
    void Unload();   // stores the settings; once. The destructor does it otherwise.

    // Writes the list into TError.txt of the program's folder and opens it. False: `errorText` tells why.
    bool PrintReport(QString& errorText);

    QLabel* Text1 = nullptr;
    platform::ListView* ListView1 = nullptr;
    std::array<QPushButton*, 2> Command1{};

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void build();
    void print();
    void box(const QString& text, platform::BoxIcon icon);
    QString report() const;

    bool loaded_ = false;
};
