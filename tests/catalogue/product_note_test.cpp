#include "catalogue/product_note.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QWidget>

namespace {

struct ProductNoteTest : ::testing::Test {
    void putIn(int position, const QString& text) {
        QTextCursor cursor = note.textCursor();
        cursor.setPosition(position);
        note.setTextCursor(cursor);
        note.insertPlainText(text);
    }
    QWidget window;
    QPlainTextEdit& note = *addProductNote(&window);
};

TEST_F(ProductNoteTest, TakesAsMuchAsTheTableHolds) {
    note.setPlainText(QString(255, QLatin1Char('x')));
    EXPECT_EQ(note.toPlainText().size(), 255);
    note.setPlainText(QString(256, QLatin1Char('x')));
    EXPECT_EQ(note.toPlainText(), QString(255, QLatin1Char('x')));
}

TEST_F(ProductNoteTest, WhatWasPutInLastGivesWay) {
    note.setPlainText(QString(250, QLatin1Char('a')) + "end");
    putIn(100, "12345");
    EXPECT_EQ(note.toPlainText(),
              QString(100, QLatin1Char('a')) + "12" + QString(150, QLatin1Char('a')) + "end");
}

}  // namespace
