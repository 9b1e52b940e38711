#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDate>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <algorithm>
#include <functional>
#include <memory>

#include "common/help.h"
#include "common/modMain.h"
#include "common/settings.h"
#include "platform/controls/boxes.h"
#include "platform/controls/date_field.h"
#include "platform/controls/link_label.h"
#include "platform/system/dates.h"
#include "platform/system/settings_store.h"
#include "records/frmDetails.h"
#include "support/modal.h"

inline QString today() {
    return platform::formatShortDate(QDate::currentDate());
}

struct HelpCall {
    HelpCommand command;
    int context;
};
inline QList<HelpCall> helpCalls;

inline bool noteHelp(const QString&, HelpCommand command, int context) {
    helpCalls.append({command, context});
    return true;
}

// The service editor alone, filled and emptied as a person does it.
struct ServiceEditor : ::testing::Test {
    void SetUp() override {
        ASSERT_TRUE(settings_.isValid());
        platform::setSettingsFolder(settings_.path());
        use("en_US");
        CeneDinarske = true;
        KursKupovni = 80.0F;
        helpCalls.clear();
        setHelpViewer(noteHelp);
    }
    void TearDown() override {
        setHelpViewer(nullptr);
        QLocale::setDefault(before_);
        static QTemporaryDir nobodysFolder;
        platform::setSettingsFolder(nobodysFolder.path());
    }

    static void use(const char* locale) { QLocale::setDefault(QLocale(QLatin1String(locale))); }

    frmDetails& editor() {
        if (!editor_) {
            editor_ = std::make_unique<frmDetails>();
            editor_->setAllServiceTypes({"", "Other", "Cleaning", "Repair", "Upgrade"});
        }
        return *editor_;
    }

    // Shows the window; `work` happens in it. Whoever leaves it open has made a mistake in the test.
    void show(int mode, const std::function<void()>& work) {
        QTimer::singleShot(0, &editor(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&editor()));
            work();
            if (editor().isVisible()) {
                ADD_FAILURE() << "the window is still open: " << boxes.lastText().toStdString();
                editor().reject();
            }
        });
        editor().Display(mode);
    }
    void add(const std::function<void()>& work) { show(frmDetails::AddMode, work); }
    void edit(const std::function<void()>& work) { show(frmDetails::EditMode, work); }

    template <typename Control = QLineEdit>
    Control* control(const QString& name) {
        auto* found = editor().findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* field(int index) { return control(QStringLiteral("Text1(%1)").arg(index)); }
    QString text(int index) { return field(index)->text(); }
    QString forPayment() { return text(3); }
    void type(int index, const QString& keys) {
        field(index)->setFocus();
        field(index)->selectAll();
        if (keys.isEmpty()) {
            QTest::keyClick(field(index), Qt::Key_Delete);
        } else {
            QTest::keyClicks(field(index), keys);
        }
    }
    void paste(int index, const QString& text) { field(index)->setText(text); }
    void click(const QString& name) { QTest::mouseClick(control<QWidget>(name), Qt::LeftButton); }
    // A help file, so that the viewer is asked and not the person.
    void provideHelp() {
        QFile file(settings_.filePath("Tarvello.hlp"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        settings::setText(settings::HelpFilePath, file.fileName());
    }
    // Through the window, wherever the focus is.
    void press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(editor().windowHandle(), key, held);
    }
    void enterOn(const QString& name) {
        control<QWidget>(name)->setFocus(Qt::TabFocusReason);
        press(Qt::Key_Return);
    }
    void ok() { click("Command1(0)"); }
    void cancel() { click("Command1(1)"); }
    QString picture(int index) {
        return control<QToolButton>(QStringLiteral("Image1(%1)").arg(index))->property("picture").toString();
    }
    platform::DateField* picker() { return control<platform::DateField>("DTPicker1"); }
    QListWidget* list() { return control<QListWidget>("List1"); }
    void clickKind(int line) {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualItemRect(list()->item(line)).center());
    }
    QString selectedKinds() {
        QString lines;
        for (int i = 0; i < list()->count(); ++i) {
            lines += list()->item(i)->isSelected() ? '1' : '0';
        }
        return lines;
    }
    QString focusName() {
        const QWidget* focus = editor().focusWidget();
        return focus ? focus->objectName() : QString();
    }

    platform::BoxScript boxes;

 private:
    QTemporaryDir settings_;
    QLocale before_;
    std::unique_ptr<frmDetails> editor_;
};
