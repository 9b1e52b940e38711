#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

class QAbstractItemView;
class QModelIndex;
class QMessageBox;
class QWidget;

// Walks through the running program as a person would, by keys and clicks into the controls that stand on the
// screen. It is loaded into the real program as a Qt plugin, so nothing in the program knows of it.
//
// A walk is a list of steps. A step waits until what it needs is there (a window, a box), acts, and is
// followed by the next one from the event loop, so that a step may open a modal window and the next one finds
// it. A step that waits longer than a patient person ends the program with exit code 1 and says where it was.
class Walker : public QObject {
 public:
    explicit Walker(QString pictureFolder, int firstPicture);

    using Action = std::function<void()>;
    using Condition = std::function<bool()>;

    // A station of the road: printed as one line when everything up to the next station went well.
    void station(const QString& text);
    void when(Condition condition, Action action);  // waits for the condition
    void act(Action action);                        // the next turn of the event loop
    void pause(int milliseconds);

    // The controls on show, by object name; the active modal window's first. Ends the walk where there is
    // none.
    QWidget* control(const QString& name);
    bool shows(const QString& name);  // a visible control of that name

    // Deeds, each a step of its own.
    void click(const QString& name);
    void type(const QString& name, const QString& text);  // into the control, replacing what it holds
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);  // to whatever has the focus
    void tool(const QString& key);  // a button of the toolbar, by its key
    void openMenu(const QString& name);
    // An item of a menu of the main window, by its text as it is read.
    void menu(const QString& name, const QString& text);
    void tab(int index);  // of the tab strip of the main window
    // A click on the row of a list whose column (from 0) holds the text, wherever it stands.
    void row(const QString& list, int column, const QString& text);
    // The same row taken by the mouse, carried over the window of that name and let go in its middle.
    void drag(const QString& list, int column, const QString& text, const QString& window);
    // Into the entry field of a small dialog (an input box, a file dialog) of that name, with Enter behind
    // it.
    void enter(const QString& dialog, const QString& text);
    void answer(const QString& saying,
                int button);  // the message box that says so; a QMessageBox::StandardButton
    // Of the active window, or of the top-level window of that name, as the next numbered PNG.
    void picture(const QString& name, const QString& window = {});
    // The same of a window that is on show for a while only, and may be gone when the machine has much to do.
    void glimpse(const QString& name, const QString& window);
    void check(const QString& what, Condition condition);
    void checkText(const QString& name, const QString& expected);

    // Walks. The program is expected to end by itself after the last step.
    void start();

 private:
    // What is not on show at the moment is no failure while a check still waits.
    bool glance(const Condition& condition);
    struct Step {
        QString station;
        Condition condition;
        Action action;
        bool newStation = false;
    };
    void next();
    void fail(const QString& why);
    void take(const QString& name, QWidget& window);  // the picture
    // Whoever listens to the windows is called at each picture (scripts/atspi), and the walk stands still
    // meanwhile.
    void letListen(const QString& picture, const QWidget& window);
    QModelIndex find(const QString& list, int column, const QString& text);
    QList<Step> steps_;
    int at_ = 0;
    qint64 waited_ = 0;
    bool glancing_ = false;
    bool listening_ = false;
    QString pictureFolder_;
    int pictureNumber_;
    QString station_;
};

QString textOf(const QWidget* control);   // what an entry field, a selector or a label shows
QMessageBox* boxOnShow();                 // nullptr where there is none
QWidget* windowOnShow();                  // the active modal window, else the main window
QWidget* focusOnShow();                   // the control in it that takes the keys
QWidget* topWindow(const QString& name);  // a visible top-level window of that name; nullptr: none
bool isOnScreen(const QWidget& window);   // the whole of it, frame and all
QString cell(const QWidget* list, int row, int column);  // rows and columns from 0
int rows(const QWidget* list);
