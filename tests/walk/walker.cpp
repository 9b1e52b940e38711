#include "walker.h"

#include <xcb/xcb.h>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QProcess>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kPatience = 30000;  // milliseconds
constexpr int kMoment = 10000;
constexpr int kGlance = 20;
constexpr int kPainting = 120;  // until a window has painted itself

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

struct Freed {
    void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t atomOf(xcb_connection_t* screen, const QByteArray& name) {
    const auto length = static_cast<uint16_t>(name.size());
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> atom(
        xcb_intern_atom_reply(screen, xcb_intern_atom(screen, 0, length, name.constData()), nullptr));
    return atom ? atom->atom : 0;
}

// What the screen was told to write into the title bar, which need not be what the window was told. A
// platform without a screen has no title bars.
QString titleOnScreen(const QWidget& window) {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        return window.windowTitle();
    }
    xcb_connection_t* screen = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    constexpr uint32_t kLongest = 256;  // words of four bytes
    const auto cookie = xcb_get_property(screen, 0, static_cast<xcb_window_t>(window.winId()),
                                         atomOf(screen, "_NET_WM_NAME"), XCB_ATOM_ANY, 0, kLongest);
    const std::unique_ptr<xcb_get_property_reply_t, Freed> title(
        xcb_get_property_reply(screen, cookie, nullptr));
    if (!title) {
        return {};
    }
    return QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(title.get())),
                             xcb_get_property_value_length(title.get()));
}

}  // namespace

QMessageBox* boxOnShow() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QWidget* topWindow(const QString& name) {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->objectName() == name) {
            return window;
        }
    }
    return nullptr;
}

QWidget* windowOnShow() {
    QWidget* modal = QApplication::activeModalWidget();
    // The catalogue holds the requisition below it still without Qt's help, so that it can take a drop.
    if (modal != nullptr && modal->objectName() == QLatin1String("frmInvoiceEx")) {
        if (QWidget* catalogue = topWindow(QStringLiteral("frmKonfiguratorEx"))) {
            return catalogue;
        }
    }
    if (modal != nullptr) {
        return modal;
    }
    return topWindow(QStringLiteral("frmMain"));
}

QWidget* focusOnShow() {
    QWidget* window = windowOnShow();
    return window != nullptr && window->focusWidget() != nullptr ? window->focusWidget() : window;
}

bool isOnScreen(const QWidget& window) {
    return window.screen()->availableGeometry().contains(window.frameGeometry());
}

QString textOf(const QWidget* control) {
    if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
        return line->text();
    }
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(control)) {
        return text->toPlainText();
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(control)) {
        return combo->currentText();
    }
    if (const auto* label = qobject_cast<const QLabel*>(control)) {
        return label->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
        return button->text();
    }
    return {};
}

QString cell(const QWidget* list, int row, int column) {
    const auto* view = qobject_cast<const QAbstractItemView*>(list);
    return view == nullptr ? QString() : view->model()->index(row, column).data().toString();
}

int rows(const QWidget* list) {
    const auto* view = qobject_cast<const QAbstractItemView*>(list);
    return view == nullptr ? -1 : view->model()->rowCount();
}

Walker::Walker(QString pictureFolder, int firstPicture)
    : pictureFolder_(std::move(pictureFolder)), pictureNumber_(firstPicture) {
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (at_ < steps_.size()) {
            fail(QStringLiteral("the program has ended before the walk"));
        }
        say(QStringLiteral("ok    ") + station_);
    });
}

void Walker::station(const QString& text) {
    steps_.append({text, [] { return true; }, [] {}, true});
}

void Walker::when(Condition condition, Action action) {
    steps_.append({{}, std::move(condition), std::move(action), false});
}

void Walker::act(Action action) {
    when([] { return true; }, std::move(action));
}

void Walker::pause(int milliseconds) {
    act([milliseconds] { QTest::qWait(milliseconds); });
}

bool Walker::shows(const QString& name) {
    QWidget* window = windowOnShow();
    if (window == nullptr) {
        return false;
    }
    if (window->objectName() == name) {
        return true;
    }
    const auto found = window->findChildren<QWidget*>(name);
    for (const QWidget* widget : found) {
        if (widget->isVisible()) {
            return true;
        }
    }
    return false;
}

QWidget* Walker::control(const QString& name) {
    if (QWidget* window = windowOnShow()) {
        if (window->objectName() == name) {
            return window;
        }
        const auto found = window->findChildren<QWidget*>(name);
        for (QWidget* widget : found) {
            if (widget->isVisible()) {
                return widget;
            }
        }
    }
    if (!glancing_) {
        fail(QStringLiteral("there is no \"%1\" on show").arg(name));
    }
    return nullptr;
}

bool Walker::glance(const Condition& condition) {
    const QScopedValueRollback glancing(glancing_, true);
    return condition();
}

void Walker::click(const QString& name) {
    when([this, name] { return shows(name); },
         [this, name] {
             QWidget* widget = control(name);
             if (!widget->isEnabled()) {
                 fail(QStringLiteral("\"%1\" is disabled").arg(name));
             }
             QTest::mouseClick(widget, Qt::LeftButton);
         });
}

void Walker::type(const QString& name, const QString& text) {
    when([this, name] { return shows(name) && control(name)->isEnabled(); },
         [this, name, text] {
             QWidget* widget = control(name);
             widget->setFocus();
             QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
             QTest::keyClick(widget, Qt::Key_Delete);
             QTest::keyClicks(widget, text);
         });
}

void Walker::press(int key, Qt::KeyboardModifiers modifiers) {
    act([this, key, modifiers] {
        QWidget* focus = QApplication::activePopupWidget();
        if (focus == nullptr) {
            if (QWidget* window = windowOnShow()) {
                window->activateWindow();  // no window manager does it here
                static_cast<void>(QTest::qWaitForWindowActive(window, 1000));
            }
            focus = focusOnShow();
        }
        if (focus == nullptr) {
            fail(QStringLiteral("no window takes the key"));
        }
        QTest::keyClick(focus, static_cast<Qt::Key>(key), modifiers);
    });
}

void Walker::tool(const QString& key) {
    act([this, key] {
        QWidget* window = windowOnShow();
        const auto bars = window->findChildren<QToolBar*>();
        for (const QToolBar* bar : bars) {
            const auto actions = bar->actions();
            for (QAction* action : actions) {
                if (action->objectName() != key) {
                    continue;
                }
                if (!action->isEnabled()) {
                    fail(QStringLiteral("the toolbar's \"%1\" is disabled").arg(key));
                }
                QTest::mouseClick(bar->widgetForAction(action), Qt::LeftButton);
                return;
            }
        }
        fail(QStringLiteral("the toolbar has no \"%1\"").arg(key));
    });
}

void Walker::openMenu(const QString& name) {
    act([this, name] {
        auto* menu = windowOnShow()->findChild<QMenu*>(name);
        if (menu == nullptr) {
            fail(QStringLiteral("there is no menu \"%1\"").arg(name));
        }
        menu->popup(windowOnShow()->mapToGlobal(QPoint(20, 40)));
    });
    pause(60);
}

void Walker::menu(const QString& name, const QString& text) {
    openMenu(name);
    act([this, name, text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr || menu->objectName() != name) {
            fail(QStringLiteral("the menu \"%1\" does not open").arg(name));
        }
        QAction* item = nullptr;
        for (QAction* each : menu->actions()) {
            item = each->text().remove(QLatin1Char('&')) == text ? each : item;
        }
        if (item == nullptr || !item->isEnabled()) {
            fail(QStringLiteral("\"%1\" of \"%2\" cannot be chosen").arg(text, name));
        }
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(item).center());
    });
}

void Walker::tab(int index) {
    act([this, index] {
        auto* strip = qobject_cast<QTabBar*>(control(QStringLiteral("TabStrip1")));
        if (strip == nullptr) {
            fail(QStringLiteral("there is no tab strip"));
        }
        QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(index).center());
    });
}

QModelIndex Walker::find(const QString& list, int column, const QString& text) {
    auto* view = qobject_cast<QAbstractItemView*>(control(list));
    if (view == nullptr) {
        fail(QStringLiteral("\"%1\" is no list").arg(list));
    }
    for (int i = 0; i < view->model()->rowCount(); ++i) {
        if (view->model()->index(i, column).data().toString() == text) {
            return view->model()->index(i, column);
        }
    }
    fail(QStringLiteral("\"%1\" has no row with \"%2\"").arg(list, text));
    return {};
}

void Walker::row(const QString& list, int column, const QString& text) {
    act([this, list, column, text] {
        const QModelIndex index = find(list, column, text);
        auto* view = qobject_cast<QAbstractItemView*>(control(list));
        view->scrollTo(index);
        view->setFocus();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(index).center());
    });
}

void Walker::drag(const QString& list, int column, const QString& text, const QString& window) {
    // While the button is down a loop of the drag's own turns: each of these steps comes from it.
    const auto over = [window](int towards) {
        QWidget* target = topWindow(window);
        return std::pair(target->windowHandle(), target->rect().center() + QPoint(towards, towards));
    };
    act([this, list, column, text] {
        const QModelIndex index = find(list, column, text);
        auto* view = qobject_cast<QAbstractItemView*>(control(list));
        view->scrollTo(index);
        const QPoint at = view->visualRect(index).center();
        QWidget* surface = view->viewport();
        QTest::mousePress(surface, Qt::LeftButton, Qt::NoModifier, at);
        for (const int step : {4, 12, 24}) {
            QMouseEvent move(QEvent::MouseMove, at + QPoint(step, step),
                             surface->mapToGlobal(at + QPoint(step, step)), Qt::NoButton, Qt::LeftButton,
                             Qt::NoModifier);
            QApplication::sendEvent(surface, &move);
        }
    });
    for (const int towards : {-20, -10, 0}) {
        act([over, towards] {
            const auto [handle, at] = over(towards);
            QTest::mouseMove(handle, at);
        });
    }
    act([over] {
        const auto [handle, at] = over(0);
        QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, at);
    });
}

void Walker::enter(const QString& dialog, const QString& text) {
    when(
        [dialog] {
            const QWidget* modal = QApplication::activeModalWidget();
            return modal != nullptr && modal->objectName() == dialog;
        },
        [this, text] {
            for (QLineEdit* field : QApplication::activeModalWidget()->findChildren<QLineEdit*>()) {
                if (!field->isVisible()) {
                    continue;
                }
                field->setText(
                    text);  // letter by letter the list of completions may come up and take the Enter
                QTest::keyClick(field, Qt::Key_Return);
                return;
            }
            fail(QStringLiteral("the dialog has no entry field"));
        });
}

void Walker::answer(const QString& saying, int button) {
    when([] { return boxOnShow() != nullptr; },
         [this, saying, button] {
             QMessageBox* box = boxOnShow();
             if (!box->text().contains(saying)) {
                 fail(QStringLiteral("the box says \"%1\" and not \"%2\"").arg(box->text(), saying));
             }
             QAbstractButton* wanted = box->button(static_cast<QMessageBox::StandardButton>(button));
             if (wanted == nullptr) {
                 fail(QStringLiteral("the box has no such button: %1").arg(box->text()));
             }
             QTest::mouseClick(wanted, Qt::LeftButton);
         });
}

void Walker::picture(const QString& name, const QString& windowName) {
    pause(kPainting);
    act([this, name, windowName] {
        QWidget* window = windowName.isEmpty() ? windowOnShow() : topWindow(windowName);
        if (window == nullptr) {
            fail(QStringLiteral("there is no window to take a picture of"));
        }
        take(name, *window);
    });
}

void Walker::glimpse(const QString& name, const QString& windowName) {
    pause(kPainting);
    act([this, name, windowName] {
        if (QWidget* window = topWindow(windowName)) {
            take(name, *window);
        }
    });
}

void Walker::take(const QString& name, QWidget& window) {
    const QString file = QStringLiteral("%1/%2-%3.png")
                             .arg(pictureFolder_)
                             .arg(pictureNumber_++, 2, 10, QLatin1Char('0'))
                             .arg(name);
    if (!window.grab().save(file)) {
        fail(QStringLiteral("the picture %1 cannot be written").arg(file));
    }
    if (!isOnScreen(window)) {
        fail(QStringLiteral("the screen has no room for \"%1\"").arg(name));
    }
    const bool hasTitle = !window.windowTitle().isEmpty();  // a menu has none
    if (hasTitle && titleOnScreen(window) != window.windowTitle()) {
        fail(QStringLiteral("the title bar says \"%1\"").arg(titleOnScreen(window)));
    }
    letListen(QFileInfo(file).completeBaseName(), window);
}

void Walker::letListen(const QString& picture, const QWidget& window) {
    const QString listener = qEnvironmentVariable("TARVELLO_WALK_LISTENER");
    if (listener.isEmpty()) {
        return;
    }
    // An open menu is heard as a part of its window.
    const QWidget& heard = window.windowType() == Qt::Popup ? *windowOnShow() : window;
    // The program has to answer the listener, so its events go on.
    const QScopedValueRollback listening(listening_, true);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    QEventLoop loop;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
    const QString name = heard.accessibleName().isEmpty() ? heard.windowTitle() : heard.accessibleName();
    process.start(listener, {picture, name, QStringLiteral("%1x%2").arg(heard.width()).arg(heard.height())});
    loop.exec();
    if (process.error() != QProcess::UnknownError || process.exitCode() != 0) {
        fail(QStringLiteral("%1 cannot be heard").arg(picture));
    }
}

void Walker::check(const QString& what, Condition condition) {
    // Given a moment, as an eye gives it: what a click starts may end in a later turn of the event loop.
    auto deadline = std::make_shared<int>(0);
    when(
        [this, condition, deadline] {
            *deadline += kGlance;
            return glance(condition) || *deadline > kMoment;
        },
        [this, what, condition] {
            if (!condition()) {
                fail(QStringLiteral("not so: %1").arg(what));
            }
        });
}

void Walker::checkText(const QString& name, const QString& expected) {
    auto deadline = std::make_shared<int>(0);
    when(
        [this, name, expected, deadline] {
            *deadline += kGlance;
            return (shows(name) && textOf(control(name)) == expected) || *deadline > kMoment;
        },
        [this, name, expected] {
            const QString text = textOf(control(name));
            if (text != expected) {
                fail(QStringLiteral("%1 shows \"%2\" and not \"%3\"").arg(name, text, expected));
            }
        });
}

void Walker::start() {
    QTimer::singleShot(0, this, &Walker::next);
}

void Walker::next() {
    if (at_ >= steps_.size()) {
        return;
    }
    if (listening_) {
        QTimer::singleShot(kGlance, this, &Walker::next);
        return;
    }
    const Step& step = steps_.at(at_);
    if (!step.condition()) {
        waited_ += kGlance;
        if (waited_ > kPatience) {
            fail(QStringLiteral("waited in vain"));
        }
        QTimer::singleShot(kGlance, this, &Walker::next);
        return;
    }
    waited_ = 0;
    if (step.newStation) {
        if (!station_.isEmpty()) {
            say(QStringLiteral("ok    ") + station_);
        }
        station_ = step.station;
    }
    const Action action = step.action;
    ++at_;
    // Before the step acts: it may open a modal window and come back only when that is closed.
    QTimer::singleShot(kGlance, this, &Walker::next);
    action();
}

void Walker::fail(const QString& why) {
    say(QStringLiteral("WRONG %1 (step %2): %3").arg(station_).arg(at_).arg(why));
    if (QWidget* window = windowOnShow()) {
        window->grab().save(pictureFolder_ + QStringLiteral("/wrong.png"));
    }
    std::_Exit(1);
}
