#include "platform/controls/boxes.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <stdexcept>

namespace platform {
namespace {

BoxScript* script = nullptr;

// An hourglass over a question makes people wait for the machine while the machine waits for them. However
// many routines have asked for one, all of them get theirs back when the box has been answered.
class OrdinaryPointer {
 public:
    OrdinaryPointer() {
        while (QCursor* shape = QApplication::overrideCursor()) {
            shapes_.prepend(*shape);
            QApplication::restoreOverrideCursor();
        }
    }
    ~OrdinaryPointer() {
        for (const QCursor& shape : shapes_) {
            QApplication::setOverrideCursor(shape);
        }
    }
    OrdinaryPointer(const OrdinaryPointer&) = delete;
    OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

 private:
    QList<QCursor> shapes_;
};

QWidget* ownerOr(QWidget* owner) {
    return owner ? owner : QApplication::activeWindow();
}

QMessageBox::Icon iconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case BoxButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case BoxButtons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(BoxAnswer answer) {
    switch (answer) {
        case BoxAnswer::Yes:
            return QMessageBox::Yes;
        case BoxAnswer::No:
            return QMessageBox::No;
        case BoxAnswer::Cancel:
            return QMessageBox::Cancel;
        case BoxAnswer::Ok:
            break;
    }
    return QMessageBox::Ok;
}

BoxAnswer answerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return BoxAnswer::Yes;
        case QMessageBox::No:
            return BoxAnswer::No;
        case QMessageBox::Cancel:
            return BoxAnswer::Cancel;
        default:
            return BoxAnswer::Ok;
    }
}

// The front of a list of prepared answers, or the answer for when there is none.
template <typename T>
T takeOr(QList<T>& prepared, const T& otherwise) {
    return prepared.isEmpty() ? otherwise : prepared.takeFirst();
}

BoxAnswer scriptedAnswer(const Box& box) {
    script->asked.append(box);
    if (script->onBox) {
        script->onBox(box);
    }
    return takeOr(script->answers, box.buttons == BoxButtons::Ok ? BoxAnswer::Ok : box.preselected);
}

// "Name (*.x)|*.x;*.y|Name|*.*" in the form that the toolkit's dialog takes. The pattern that the name
// already shows is not shown twice, and "*.*" means every file, also one without a point in its name.
QStringList nameFilters(const QString& filter) {
    QStringList filters;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        QString name = parts.at(i).trimmed();
        if (const qsizetype bracket = name.lastIndexOf(QLatin1Char('('));
            bracket > 0 && name.endsWith(u')')) {
            name = name.left(bracket).trimmed();
        }
        QStringList patterns = parts.value(i + 1).split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed() == QLatin1String("*.*") ? QStringLiteral("*") : pattern.trimmed();
        }
        if (patterns.isEmpty()) {
            patterns.append(QStringLiteral("*"));
        }
        if (!name.isEmpty()) {
            filters.append(QStringLiteral("%1 (%2)").arg(name, patterns.join(QLatin1Char(' '))));
        }
    }
    return filters;
}

// A box out of the toolkit takes a bare letter for a button, and Esc for No. Somebody who types on when a
// question comes up has answered nothing: a letter needs Alt, and where every answer means something, Esc and
// the close button mean none of them.
class MessageWindow : public QMessageBox {
 public:
    MessageWindow(const Box& box, QWidget* owner)
        : QMessageBox(iconOf(box.icon), box.title, QString(), buttonsOf(box.buttons), owner),
          mustAnswer_(box.buttons == BoxButtons::YesNo) {
        if (box.buttons == BoxButtons::Ok) {
            setEscapeButton(QMessageBox::Ok);  // not found by itself beside a button Help
        }
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!event->matches(QKeySequence::Cancel)) {
            QDialog::keyPressEvent(event);
        } else if (!mustAnswer_) {
            QMessageBox::keyPressEvent(event);
        }
    }
    void closeEvent(QCloseEvent* event) override {
        if (mustAnswer_) {
            event->ignore();
        } else {
            QMessageBox::closeEvent(event);
        }
    }

 private:
    bool mustAnswer_;
};

}  // namespace

BoxAnswer showBox(const Box& box, QWidget* owner) {
    if (script) {
        return scriptedAnswer(box);
    }
    const OrdinaryPointer pointer;
    MessageWindow window(box, ownerOr(owner));
    window.setObjectName(QStringLiteral("Box"));
    window.setTextFormat(Qt::PlainText);  // a client's "<b>" is a name, not a command to us
    window.setText(box.text);
    if (box.buttons != BoxButtons::Ok) {
        window.setDefaultButton(buttonOf(box.preselected));
    }
    if (box.help) {
        QPushButton* button = window.addButton(QMessageBox::Help);
        button->disconnect(SIGNAL(clicked()));  // else it would answer the box
        button->disconnect(SIGNAL(clicked(bool)));
        QObject::connect(button, &QPushButton::clicked, &window, box.help);
    }
    return answerOf(window.exec());
}

std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& initial,
                                QWidget* owner) {
    if (script) {
        Box box;
        box.text = prompt;
        box.title = title;
        script->asked.append(box);
        script->proposed.append(initial);
        if (script->onBox) {
            script->onBox(box);
        }
        return takeOr(script->inputs, std::optional<QString>());
    }
    const OrdinaryPointer pointer;
    QInputDialog window(ownerOr(owner));
    window.setObjectName(QStringLiteral("InputBox"));
    window.setWindowTitle(title);
    window.setLabelText(prompt);
    window.setTextValue(initial);
    for (QLabel* label : window.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    if (window.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return window.textValue();
}

std::optional<QString> openFileDialog(const FileQuestion& question, QWidget* owner) {
    if (script) {
        script->fileQuestions.append(question);
        return takeOr(script->files, std::optional<QString>());
    }
    const OrdinaryPointer pointer;
    QFileDialog window(ownerOr(owner), question.title, question.folder);
    window.setObjectName(QStringLiteral("FileDialog"));
    window.setAcceptMode(QFileDialog::AcceptOpen);
    window.setFileMode(QFileDialog::ExistingFile);
    window.setNameFilters(nameFilters(question.filter));
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QDir::toNativeSeparators(window.selectedFiles().constFirst());
}

namespace {

std::optional<QString> nameToWrite(const FileQuestion& question, QWidget* owner) {
    if (script) {
        script->fileQuestions.append(question);
        return takeOr(script->files, std::optional<QString>());
    }
    const OrdinaryPointer pointer;
    QFileDialog window(ownerOr(owner), question.title, question.folder);
    window.setObjectName(QStringLiteral("FileDialog"));
    window.setAcceptMode(QFileDialog::AcceptSave);
    window.setFileMode(QFileDialog::AnyFile);
    window.setNameFilters(nameFilters(question.filter));
    window.setOption(QFileDialog::DontConfirmOverwrite);
    window.selectFile(question.name);
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return window.selectedFiles().constFirst();
}

}  // namespace

std::optional<QString> saveFileDialog(const FileQuestion& question, QWidget* owner) {
    FileQuestion asked = question;
    for (;;) {
        std::optional<QString> path = nameToWrite(asked, owner);
        if (!path || path->isEmpty()) {
            return std::nullopt;
        }
        if (!path->endsWith(question.extension, Qt::CaseInsensitive)) {
            path->append(question.extension);
        }
        const QFileInfo file(*path);
        if (question.replaceText.isEmpty() || !file.exists()) {
            return QDir::toNativeSeparators(*path);
        }
        const Box box{question.replaceText.arg(file.fileName()), question.title, BoxIcon::Exclamation,
                      BoxButtons::YesNo, BoxAnswer::No};
        if (showBox(box, owner) == BoxAnswer::Yes) {
            return QDir::toNativeSeparators(*path);
        }
        asked.folder = file.absolutePath();
        asked.name = file.fileName();
    }
}

BoxScript::BoxScript() {
    if (script) {
        throw std::logic_error("one BoxScript answers the boxes already");
    }
    script = this;
}

BoxScript::~BoxScript() {
    script = nullptr;
}

}  // namespace platform
