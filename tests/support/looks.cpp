#include "support/looks.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTableView>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/controls/pictures.h"
#include "platform/report/document.h"
#include "platform/report/report.h"
#include "support/places.h"
#include "support/spoken.h"

namespace {

QString quoted(QString text) {
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n")).replace(QLatin1Char('\t'), QStringLiteral("\\t"));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// One line of the description: its words are added where there is something to say.
class Line {
 public:
    Line(int depth, const QString& head) : text_(QString(2 * depth, QLatin1Char(' ')) + head) {}
    Line& say(const char* what, const QString& value) {
        if (!value.isEmpty()) {
            text_ += QLatin1Char(' ') + QLatin1String(what) + QLatin1Char('=') + quoted(value);
        }
        return *this;
    }
    Line& flag(const char* what, bool is) {
        if (is) {
            text_ += QLatin1Char(' ') + QLatin1String(what);
        }
        return *this;
    }
    Line& number(const char* what, qint64 value, qint64 usual) {
        if (value != usual) {
            text_ += QStringLiteral(" %1=%2").arg(QLatin1String(what)).arg(value);
        }
        return *this;
    }
    Line& add(const QString& words) {
        text_ += QLatin1Char(' ') + words;
        return *this;
    }
    const QString& text() const { return text_; }

 private:
    QString text_;
};

// What kind of control a person would call it; the windows' own classes are nobody's business here.
QString kindOf(const QWidget& widget) {
    const QMetaObject* kind = widget.metaObject();
    while (*kind->className() != 'Q' && qstrncmp(kind->className(), "platform::", 10) != 0) {
        kind = kind->superClass();
    }
    return QLatin1String(kind->className());
}

// Which of our drawings an icon is; "?" for another one. Told by the picture itself: an icon does not keep
// its name.
QString drawingOf(const QIcon& icon) {
    constexpr int kSide = 32;
    if (icon.isNull()) {
        return {};
    }
    static const QHash<QString, QImage> kDrawings = [] {
        QHash<QString, QImage> images;
        platform::icon(QString());  // the drawings are there from now on
        for (const QString& file : QDir(QStringLiteral(":/icons")).entryList()) {
            const QString name = QFileInfo(file).completeBaseName();
            images.insert(name, platform::icon(name).pixmap(kSide).toImage());
        }
        return images;
    }();
    const QString name = kDrawings.key(icon.pixmap(kSide, QIcon::Normal).toImage());
    return name.isEmpty() ? QStringLiteral("?") : name;
}

QString drawingOf(const QVariant& decoration) {
    return decoration.isNull() ? QString() : drawingOf(decoration.value<QIcon>());
}

QString alignmentOf(Qt::Alignment alignment) {
    return QString::fromLatin1(QMetaEnum::fromType<Qt::Alignment>().valueToKeys(alignment.toInt()));
}

// A control of the toolkit as it comes, to tell what ours have changed; nullptr: nothing to compare with.
template <typename Control>
QWidget* plain() {
    return new Control;
}

const QWidget* plainControl(const QMetaObject& kind) {
    using Make = QWidget* (*)();
    static const QHash<QByteArray, Make> kMakers = {
        {"QLabel", plain<QLabel>},
        {"QPushButton", plain<QPushButton>},
        {"QToolButton", plain<QToolButton>},
        {"QCheckBox", plain<QCheckBox>},
        {"QLineEdit", plain<QLineEdit>},
        {"QPlainTextEdit", plain<QPlainTextEdit>},
        {"QTextEdit", plain<QTextEdit>},
        {"QTextBrowser", plain<QTextBrowser>},
        {"QComboBox", plain<QComboBox>},
        {"QTabBar", plain<QTabBar>},
        {"QTabWidget", plain<QTabWidget>},
        {"QTreeView", plain<QTreeView>},
        {"QTreeWidget", plain<QTreeWidget>},
        {"QListView", plain<QListView>},
        {"QListWidget", plain<QListWidget>},
        {"QTableView", plain<QTableView>},
        {"QSplitter", plain<QSplitter>},
        {"QToolBar", plain<QToolBar>},
        {"QGroupBox", plain<QGroupBox>},
        {"QProgressBar", plain<QProgressBar>},
        {"QScrollArea", plain<QScrollArea>},
        {"QDateEdit", plain<QDateEdit>},
        {"QSpinBox", plain<QSpinBox>},
        {"QHeaderView", []() -> QWidget* { return new QHeaderView(Qt::Horizontal); }}};
    static QHash<QByteArray, std::shared_ptr<QWidget>> made;
    const QMetaObject* known = &kind;
    while (known != nullptr && !kMakers.contains(known->className())) {
        known = known->superClass();
    }
    if (known == nullptr) {
        return nullptr;
    }
    std::shared_ptr<QWidget>& control = made[known->className()];
    if (control == nullptr) {
        control.reset(kMakers.value(known->className())());
    }
    return control.get();
}

class Description {
 public:
    explicit Description(const QWidget& window) { describe(window, 0); }
    QString text() const { return lines_.join(QLatin1Char('\n')) + QLatin1Char('\n'); }

 private:
    void put(const Line& line) { lines_.append(line.text()); }

    static bool isInside(const QWidget& widget) {
        return qobject_cast<const QScrollBar*>(&widget) != nullptr ||
               qobject_cast<const QHeaderView*>(&widget) != nullptr ||
               widget.inherits("QLineEditIconButton") || widget.inherits("QToolBarExtension") ||
               widget.inherits("QComboBoxPrivateContainer") ||
               (qobject_cast<const QComboBox*>(widget.parentWidget()) != nullptr);
    }

    static void describeLetters(const QWidget& widget, Line& line) {
        const QFont usual = QApplication::font();
        const QFont font = widget.font();
        line.flag("bold", font.bold()).flag("italic", font.italic()).flag("underlined", font.underline());
        line.say("letters", font.family() == usual.family() ? QString() : font.family());
        const double size = font.pointSizeF() / usual.pointSizeF();
        if (std::abs(size - 1) > 0.01) {
            line.add(QStringLiteral("size=%1").arg(size, 0, 'f', 2));
        }
    }

    static void describeColours(const QWidget& widget, Line& line) {
        const QPalette usual = QApplication::palette();
        const std::pair<const char*, QPalette::ColorRole> roles[] = {{"window", QPalette::Window},
                                                                     {"words", QPalette::WindowText},
                                                                     {"base", QPalette::Base},
                                                                     {"text", QPalette::Text}};
        for (const auto& [name, role] : roles) {
            const QColor colour = widget.palette().color(QPalette::Active, role);
            if (colour != usual.color(QPalette::Active, role)) {
                line.add(QStringLiteral("%1=%2").arg(QLatin1String(name), colour.name()));
            }
        }
        const QWidget* parent = widget.parentWidget();
        line.number("ground", widget.backgroundRole(),
                    parent == nullptr ? QPalette::Window : parent->backgroundRole());
        line.flag("filled", widget.autoFillBackground());
    }

    // A bound of a control's size, in letters across and lines down: the letters differ from machine
    // to machine, how many of them fit does not.
    static void describeBounds(const QWidget& widget, Line& line) {
        if (widget.isWindow()) {
            return;  // as small as what is in it allows
        }
        const QFontMetricsF letters(widget.font());
        const auto say = [&line](const char* what, int value, int usual, double unit) {
            if (value != usual) {
                line.add(QStringLiteral("%1=%2").arg(QLatin1String(what)).arg(value / unit, 0, 'f', 1));
            }
        };
        say("letters-at-least", widget.minimumWidth(), 0, letters.averageCharWidth());
        say("lines-at-least", widget.minimumHeight(), 0, letters.lineSpacing());
        say("letters-wide-at-most", widget.maximumWidth(), QWIDGETSIZE_MAX, letters.averageCharWidth());
        say("lines-at-most", widget.maximumHeight(), QWIDGETSIZE_MAX, letters.lineSpacing());
    }

    // Switches and numbers of the control that are not as the toolkit makes them. Left out: what is told
    // above, what a person changes, and what follows the style.
    static void describeChanges(const QWidget& widget, Line& line) {
        static const QStringList kElsewhere = {"alignment",
                                               "autoDefault",
                                               "checkable",
                                               "checked",
                                               "children",
                                               "collapsible",
                                               "count",
                                               "currentIndex",
                                               "cursorPosition",
                                               "cursorWidth",
                                               "default",
                                               "defaultSectionSize",
                                               "editable",
                                               "frameShadow",
                                               "frameShape",
                                               "frameWidth",
                                               "handleWidth",
                                               "indentation",
                                               "maxLength",
                                               "maximumSectionSize",
                                               "midLineWidth",
                                               "minimumSectionSize",
                                               "modified",
                                               "orientation",
                                               "readOnly",
                                               "sliderDown",
                                               "tabChangesFocus",
                                               "undoAvailable",
                                               "value",
                                               "topLevelItemCount",
                                               "currentRow",
                                               "currentData",
                                               "wordWrap",
                                               "hasSelectedText",
                                               "selectionStart",
                                               "backwardAvailable",
                                               "forwardAvailable",
                                               "blockCount",
                                               "acceptableInput",
                                               "movable",
                                               "floating",
                                               "lineWidth",
                                               "currentSection",
                                               "currentSectionIndex",
                                               "sectionCount",
                                               "textVisible",
                                               "echoMode",
                                               "toolButtonStyle",
                                               "sourceType",
                                               "redoAvailable",
                                               "down"};
        const QWidget* usual = plainControl(*widget.metaObject());
        if (usual == nullptr) {
            return;
        }
        const QMetaObject& kind = *usual->metaObject();
        for (int i = QWidget::staticMetaObject.propertyCount(); i < kind.propertyCount(); ++i) {
            const QMetaProperty property = kind.property(i);
            const QString name = QLatin1String(property.name());
            const QVariant value = property.read(&widget);
            const int type = value.metaType().id();
            if (kElsewhere.contains(name) ||
                (type != QMetaType::Bool && type != QMetaType::Int && type != QMetaType::Double &&
                 !property.isEnumType()) ||
                value == property.read(usual)) {
                continue;
            }
            line.add(name + QLatin1Char('=') + QString::number(value.toDouble()));
        }
    }

    static void describeKind(const QWidget& widget, Line& line) {
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            const bool isClock = label->objectName() == QLatin1String("Panel(Time)");
            line.say("text", isClock ? QString() : label->text())
                .flag("picture", !label->pixmap(Qt::ReturnByValue).isNull());
            line.flag("wraps", label->wordWrap()).add(alignmentOf(label->alignment()));
            line.say("buddy", label->buddy() == nullptr ? QString() : label->buddy()->objectName());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            line.say("text", button->text()).say("picture", drawingOf(button->icon()));
            line.flag("checkable", button->isCheckable()).flag("checked", button->isChecked());
            line.say("key", button->shortcut().toString());
            if (const auto* push = qobject_cast<const QPushButton*>(button)) {
                line.flag("default", push->isDefault()).flag("auto-default", push->autoDefault());
            }
        } else if (const auto* field = qobject_cast<const QLineEdit*>(&widget)) {
            line.number("letters-at-most", field->maxLength(), 32767).flag("read-only", field->isReadOnly());
            line.say("hint", field->placeholderText()).number("echo", field->echoMode(), 0);
            line.flag("right", field->alignment().testFlag(Qt::AlignRight));
        } else if (const auto* plain = qobject_cast<const QPlainTextEdit*>(&widget)) {
            line.flag("read-only", plain->isReadOnly()).flag("tab-leaves", plain->tabChangesFocus());
        } else if (const auto* rich = qobject_cast<const QTextEdit*>(&widget)) {
            line.flag("read-only", rich->isReadOnly()).flag("tab-leaves", rich->tabChangesFocus());
        } else if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
            line.flag("editable", combo->isEditable());
        } else if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
            line.say("title", group->title()).flag("checkable", group->isCheckable());
        } else if (const auto* bar = qobject_cast<const QProgressBar*>(&widget)) {
            line.flag("without-text", !bar->isTextVisible());
        } else if (const auto* splitter = qobject_cast<const QSplitter*>(&widget)) {
            line.flag("can-close", splitter->childrenCollapsible())
                .number("direction", splitter->orientation(), 0);
            const double first = splitter->sizes().value(0);
            line.add(QStringLiteral("first=%1")
                         .arg(first / QFontMetricsF(splitter->font()).averageCharWidth(), 0, 'f', 1));
        }
        if (const auto* frame = qobject_cast<const QFrame*>(&widget)) {
            line.number("frame", frame->frameStyle(), 0);
        }
    }

    void describeAction(const QAction& action, int depth) {
        if (action.isSeparator()) {
            put(Line(depth, QStringLiteral("---")));
            return;
        }
        Line line(depth, QStringLiteral("command"));
        line.say("name", action.objectName()).say("text", action.text());
        if (action.toolTip() != QString(action.text()).remove(QLatin1Char('&'))) {
            line.say("tip", action.toolTip());
        }
        line.say("key", action.shortcut().toString()).say("picture", drawingOf(action.icon()));
        line.flag("disabled", !action.isEnabled()).flag("hidden", !action.isVisible());
        line.flag("checkable", action.isCheckable()).flag("checked", action.isChecked());
        put(line);
        if (const QMenu* menu = action.menu<QMenu*>()) {
            describeActions(*menu, depth + 1);
        }
    }

    void describeActions(const QWidget& widget, int depth) {
        for (const QAction* action : widget.actions()) {
            describeAction(*action, depth);
        }
    }

    void describeColumns(const QAbstractItemView& view, int depth) {
        const QAbstractItemModel* model = view.model();
        const auto* header = view.findChild<QHeaderView*>();
        if (model == nullptr || header == nullptr || header->isHidden()) {
            return;
        }
        Line head(depth, QStringLiteral("columns"));
        describeChanges(*header, head);
        put(head);
        for (int column = 0; column < model->columnCount(); ++column) {
            Line line(depth, QStringLiteral("column"));
            line.say("text", model->headerData(column, Qt::Horizontal).toString());
            line.add(alignmentOf(
                Qt::Alignment(model->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt())));
            line.say("picture", drawingOf(model->headerData(column, Qt::Horizontal, Qt::DecorationRole)));
            line.number("place", header->visualIndex(column), column);
            put(line);
        }
    }

    void describeRows(const QAbstractItemView& view, int depth) {
        constexpr int kEnough = 3;
        const QAbstractItemModel* model = view.model();
        for (int row = 0; model != nullptr && row < qMin(model->rowCount(), kEnough); ++row) {
            Line line(depth, QStringLiteral("row"));
            for (int column = 0; column < model->columnCount(); ++column) {
                const QModelIndex index = model->index(row, column);
                line.add(quoted(index.data().toString()));
                line.say("picture", drawingOf(index.data(Qt::DecorationRole)));
                const QVariant aligned = index.data(Qt::TextAlignmentRole);
                line.say("aligned",
                         aligned.isNull() ? QString() : alignmentOf(Qt::Alignment(aligned.toInt())));
            }
            put(line);
        }
    }

    void describeLayout(const QLayout& layout, int depth) {
        const QMargins margins = layout.contentsMargins();
        Line line(depth, QLatin1String(layout.metaObject()->className()));
        line.add(QStringLiteral("margins=%1,%2,%3,%4 spacing=%5")
                     .arg(margins.left())
                     .arg(margins.top())
                     .arg(margins.right())
                     .arg(margins.bottom())
                     .arg(layout.spacing()));
        if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
            for (int column = 0; column < grid->columnCount(); ++column) {
                line.number("stretch", grid->columnStretch(column), 0);
            }
            for (int row = 0; row < grid->rowCount(); ++row) {
                line.number("downwards", grid->rowStretch(row), 0);
            }
            line.number("between-columns", grid->horizontalSpacing(), layout.spacing());
            line.number("between-rows", grid->verticalSpacing(), layout.spacing());
        }
        put(line);
        for (int i = 0; i < layout.count(); ++i) {
            const QLayoutItem* item = const_cast<QLayout&>(layout).itemAt(i);
            Line place(depth + 1, QStringLiteral("at"));
            if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
                int row = 0, column = 0, rows = 1, columns = 1;
                grid->getItemPosition(i, &row, &column, &rows, &columns);
                place.add(QStringLiteral("%1,%2").arg(row).arg(column));
                place.number("rows", rows, 1).number("columns", columns, 1);
            } else if (const auto* box = qobject_cast<const QBoxLayout*>(&layout)) {
                place.number("stretch", box->stretch(i), 0);
            }
            place.say("aligned", alignmentOf(item->alignment()));
            if (const QWidget* widget = const_cast<QLayoutItem*>(item)->widget()) {
                place.add(kindOf(*widget) + QLatin1Char(' ') + quoted(widget->objectName()));
            }
            put(place);
            if (const QLayout* inside = const_cast<QLayoutItem*>(item)->layout()) {
                describeLayout(*inside, depth + 2);
            }
        }
    }

    void describe(const QWidget& widget, int depth) {
        if (widget.objectName().startsWith(QLatin1String("qt_")) &&
            qobject_cast<const QTabBar*>(&widget) == nullptr) {
            return describeInside(widget,
                                  depth);  // the toolkit's own, such as the room between tabs and pages
        }
        Line line(depth, kindOf(widget));
        line.say("name", widget.objectName()).say("title", widget.windowTitle());
        line.flag("hidden", widget.isHidden()).flag("disabled", !widget.isEnabled());
        describeKind(widget, line);
        // The clock tells the time and, in its tip, the day: another text each day.
        const bool isClock = widget.objectName() == QLatin1String("Panel(Time)");
        line.say("tip", isClock ? QString() : widget.toolTip()).say("says", widget.accessibleName());
        line.number("focus", widget.focusPolicy(), Qt::NoFocus);
        describeLetters(widget, line);
        describeColours(widget, line);
        describeBounds(widget, line);
        describeChanges(widget, line);
        for (const QByteArray& property : widget.dynamicPropertyNames()) {
            if (!property.startsWith("_q_") && !property.startsWith("qt_")) {
                line.say(property.constData(), widget.property(property.constData()).toString());
            }
        }
        put(line);
        if (qobject_cast<const QToolBar*>(&widget) != nullptr ||
            qobject_cast<const QMenuBar*>(&widget) != nullptr) {
            describeActions(widget, depth + 1);
        }
        if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i) {
                put(Line(depth + 1, QStringLiteral("tab"))
                        .say("text", tabs->tabText(i))
                        .say("tip", tabs->tabToolTip(i))
                        .say("picture", drawingOf(tabs->tabIcon(i)))
                        .flag("current", i == tabs->currentIndex()));
            }
        }
        if (const auto* view = qobject_cast<const QAbstractItemView*>(&widget)) {
            describeColumns(*view, depth + 1);
            describeRows(*view, depth + 1);
        }
        if (widget.layout() != nullptr && !widget.inherits("QMainWindow") && !widget.inherits("QToolBar")) {
            describeLayout(*widget.layout(), depth + 1);
        }
        describeInside(widget, depth + 1);
    }

    void describeInside(const QWidget& widget, int depth) {
        QList<const QWidget*> all;
        for (const QObject* child : widget.children()) {
            const auto* inside = qobject_cast<const QWidget*>(child);
            if (inside != nullptr && !inside->isWindow() && !isInside(*inside)) {
                all.append(inside);
            }
        }
        // By name: nobody sees in which order they were made.
        std::stable_sort(all.begin(), all.end(), [](const QWidget* one, const QWidget* other) {
            return one->objectName() < other->objectName();
        });
        for (const QWidget* inside : all) {
            describe(*inside, depth);
        }
    }

    QStringList lines_;
};

// The way of the Tab key through a window: a ring, so told from the control that has the focus.
QString wayOfTab(const QWidget& window) {
    const QWidget* start = window.focusWidget() != nullptr ? window.focusWidget() : &window;
    QStringList names;
    const QWidget* widget = start;
    do {
        if (widget->window() == &window && (widget->focusPolicy() & Qt::TabFocus) != 0 &&
            !widget->objectName().startsWith(QLatin1String("qt_")) && !widget->objectName().isEmpty()) {
            names.append(widget->objectName());
        }
        widget = widget->nextInFocusChain();
    } while (widget != start && widget != nullptr);
    return QStringLiteral("Tab: ") + names.join(QLatin1Char(' ')) + QLatin1Char('\n');
}

QString describe(const report::Document& document) {
    QStringList lines{
        QStringLiteral("%1 %2x%3").arg(quoted(document.title)).arg(document.width).arg(document.height)};
    for (const report::Page& page : document.pages) {
        lines.append(QStringLiteral("page"));
        for (const report::PageItem& item : page.items) {
            const report::ItemStyle& style = document.styles.at(static_cast<size_t>(item.style));
            Line line(1, QStringLiteral("%1").arg(static_cast<int>(item.kind)));
            line.say("text", item.text)
                .add(QStringLiteral("%1 %2").arg(style.points).arg(style.color.name()));
            line.flag("bold", style.bold)
                .flag("italic", style.italic)
                .say("letters", style.family == QApplication::font().family() ? QString() : style.family);
            if (item.kind != report::PageItem::Kind::Text) {
                line.add(QStringLiteral("left=%1 right=%2 line=%3")
                             .arg(item.place.left())
                             .arg(item.place.right())
                             .arg(style.lineWidth));
            }
            lines.append(line.text());
        }
    }
    for (const report::ContentsEntry& entry : document.contents) {
        lines.append(
            QStringLiteral("contents %1 %2 %3").arg(entry.level).arg(entry.page).arg(quoted(entry.text)));
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

// A design: what stands where in each of its sections.
QString describe(report::Report& report, const QStringList& sections) {
    QStringList lines;
    for (const QString& name : sections) {
        report::Section& section = report.Sections(name);
        Line head(0, name);
        head.number("kind", static_cast<int>(section.kind()), -1).number("height", section.Height, 0);
        head.flag("hidden", !section.Visible)
            .flag("shrinks", section.CanShrink)
            .flag("repeats", section.RepeatOnPage);
        lines.append(head.say("field", section.DataField).text());
        for (const auto& control : section.all()) {
            using Kind = report::Control::Kind;
            const bool isLine = control->kind == Kind::Line, isShape = control->kind == Kind::Shape;
            Line line(1, quoted(control->name));
            line.add(QString::number(static_cast<int>(control->kind))).flag("hidden", !control->Visible);
            if (isLine) {
                line.add(QStringLiteral("from %1,%2 to %3,%4")
                             .arg(control->X1)
                             .arg(control->Y1)
                             .arg(control->X2)
                             .arg(control->Y2));
            } else {
                line.add(QStringLiteral("at %1,%2 %3x%4")
                             .arg(control->Left)
                             .arg(control->Top)
                             .arg(control->Width)
                             .arg(control->Height));
            }
            if (isLine || isShape) {
                line.add(control->lineColor.name()).number("line", control->lineWidth, 15);
                line.say("fill", control->fill ? control->fill->name() : QString());
            } else if (control->kind == Kind::Image) {
                line.say("picture", control->picture);
            } else {
                line.flag("grows", control->CanGrow).say("caption", control->Caption);
                line.say("field", control->DataField).say("format", control->OutputFormat);
                line.add(QStringLiteral("%1 %2 %3")
                             .arg(control->style.points)
                             .arg(control->style.color.name())
                             .arg(static_cast<int>(control->style.align)));
                line.flag("bold", control->style.bold).flag("italic", control->style.italic);
            }
            lines.append(line.text());
        }
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

QString describe(const QTextFrame& frame, int depth) {
    QStringList lines;
    const QTextFrameFormat format = frame.frameFormat();
    Line head(depth, format.isTableFormat() ? QStringLiteral("table") : QStringLiteral("text"));
    head.add(QStringLiteral("margins=%1,%2,%3,%4")
                 .arg(format.leftMargin())
                 .arg(format.topMargin())
                 .arg(format.rightMargin())
                 .arg(format.bottomMargin()));
    head.number("border", qRound(format.border()), 0).number("style", format.borderStyle(), 0);
    if (const auto* table = qobject_cast<const QTextTable*>(&frame)) {
        const QTextTableFormat cells = table->format();
        head.add(QStringLiteral("%1x%2 padding=%3 spacing=%4")
                     .arg(table->rows())
                     .arg(table->columns())
                     .arg(cells.cellPadding())
                     .arg(cells.cellSpacing()));
        head.flag("collapsed", cells.borderCollapse());
    }
    lines.append(head.text());
    for (QTextFrame::iterator part = frame.begin(); !part.atEnd(); ++part) {
        if (part.currentFrame() != nullptr) {
            lines.append(describe(*part.currentFrame(), depth + 1));
            continue;
        }
        const QTextBlock block = part.currentBlock();
        const QTextBlockFormat shape = block.blockFormat();
        Line line(depth + 1, quoted(block.text().left(40)));
        line.number("heading", shape.headingLevel(), 0).number("above", qRound(shape.topMargin()), 0);
        line.number("below", qRound(shape.bottomMargin()), 0).number("indented", shape.indent(), 0);
        for (QTextBlock::iterator piece = block.begin(); !piece.atEnd(); ++piece) {
            const QTextCharFormat letters = piece.fragment().charFormat();
            line.say("link", letters.anchorHref())
                .say("anchor", letters.anchorNames().join(QLatin1Char(',')));
            line.flag("picture", letters.isImageFormat());
        }
        lines.append(line.text());
    }
    return lines.join(QLatin1Char('\n'));
}

void compare(QString found, const QString& name) {
    if (name.startsWith(QLatin1String("document_"))) {  // these number by the year of today
        found.replace(QString::number(QDate::currentDate().year()), QStringLiteral("YEAR"));
    }
    const QString path =
        QString::fromUtf8(tests::kSourceFolder) + QStringLiteral("/looks/") + name + QStringLiteral(".txt");
    QFile file(path);
    if (qEnvironmentVariableIsSet("TARVELLO_WRITE_LOOKS")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(found.toUtf8());
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QStringList wanted = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const QStringList lines = found.split(QLatin1Char('\n'));
    int told = 0;
    for (qsizetype i = 0; i < qMax(wanted.size(), lines.size()) && told < 10; ++i) {
        if (wanted.value(i) != lines.value(i)) {
            ADD_FAILURE() << name.toStdString() << ", line " << i + 1
                          << "\n  it was: " << wanted.value(i).toStdString()
                          << "\n  it is:  " << lines.value(i).toStdString();
            ++told;
        }
    }
}

}  // namespace

void expectLooks(const QWidget& window, const QString& name) {
    compare(Description(window).text() + wayOfTab(window), name);
    expectSpoken(window);
    if (!name.startsWith(QLatin1String("service_editor"))) {  // its way goes by what is asked first
        expectTabFollowsTheEye(window);
    }
}

void expectLooks(const report::Document& document, const QString& name) {
    compare(describe(document), name);
}

void expectDesign(report::Report& report, const QStringList& sections, const QString& name) {
    compare(describe(report, sections), name);
}

void expectLooks(const QTextDocument& text, const QString& name) {
    compare(describe(*text.rootFrame(), 0) + QLatin1Char('\n'), name);
}

void expectText(const QString& found, const QString& name) {
    compare(found, name);
}
