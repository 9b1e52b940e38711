#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <optional>

class QWidget;

// The one place where message boxes, input boxes and file dialogs come from. Tests answer them here and read
// what was said; under a test no box is ever shown.
namespace platform {

enum class BoxIcon { None, Information, Exclamation, Critical, Question };
enum class BoxButtons { Ok, YesNo, YesNoCancel };
enum class BoxAnswer { Ok, Yes, No, Cancel };

struct Box {
    QString text;
    QString title;
    BoxIcon icon = BoxIcon::None;
    BoxButtons buttons = BoxButtons::Ok;
    BoxAnswer preselected = BoxAnswer::Yes;  // which button Enter presses; ignored for Ok
    std::function<void()> help = {};  // of a button Help, which leaves the box up; none: no such button
};

// Owner: the active window where nullptr. The pointer goes to normal while the box is up and back afterwards.
// Answered by Enter, Space on the button with the focus, Alt and a letter, or the mouse; a bare letter is no
// answer. Esc and the close button mean Ok or Cancel; in a box that asks Yes or No they do nothing.
BoxAnswer showBox(const Box& box, QWidget* owner = nullptr);

// Nothing where it was cancelled.
std::optional<QString> inputBox(const QString& prompt, const QString& title, const QString& initial,
                                QWidget* owner = nullptr);

struct FileQuestion {
    QString title;
    QString filter;  // "Name (*.x)|*.x|Name|*.*": pairs of a name and a pattern
    QString folder;
    // For a file to be written:
    QString name = {};       // proposed, may be empty
    QString extension = {};  // ".pdf" and its like, put behind a name that does not end with it
    // Asked (No preselected) where the file is there already, "%1" standing for its name; after a No the name
    // is asked for again. Empty: nobody is asked.
    QString replaceText = {};
};
// An existing file; nothing where it was cancelled.
std::optional<QString> openFileDialog(const FileQuestion& question, QWidget* owner = nullptr);

// The path of a file to be written; nothing where it was cancelled. Writes nothing itself.
std::optional<QString> saveFileDialog(const FileQuestion& question, QWidget* owner = nullptr);

// What tests put in the place of the real boxes. Every box asked is kept in `asked`; an answer is taken from
// `answers` (front first); with none left a Yes/No question answers its preselected button, OK boxes OK.
// While one exists, no real box is shown. Only one at a time.
class BoxScript {
 public:
    BoxScript();
    ~BoxScript();
    BoxScript(const BoxScript&) = delete;
    BoxScript& operator=(const BoxScript&) = delete;

    QList<Box> asked;
    QList<BoxAnswer> answers;
    QList<std::optional<QString>> inputs;  // answers to input boxes; none left: cancelled
    QStringList proposed;                  // what stood in the entry field of each input box
    QList<std::optional<QString>> files;   // answers to file dialogs; none left: cancelled
    QList<FileQuestion> fileQuestions;
    // Called before an answer is given, so that a test can act while the box would be up.
    std::function<void(const Box&)> onBox;
    QString lastText() const { return asked.isEmpty() ? QString() : asked.last().text; }
};

}  // namespace platform
