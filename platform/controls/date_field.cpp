#include "platform/controls/date_field.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyleOptionComboBox>
#include <algorithm>

#include "platform/controls/dressing.h"
#include "platform/controls/shades.h"
#include "platform/controls/wheel.h"
#include "platform/system/dates.h"

namespace platform {
namespace {

const QDate kFirst(100, 1, 1);
const QDate kLast(9999, 12, 31);
// Stands for Null inside the entry: the day before the first that can be entered, shown as nothing.
const QDate kNothing = kFirst.addDays(-1);

QString shortFormat() {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains(QLatin1String("yyyy"))) {
        format.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    }
    return format;
}

}  // namespace

// The toolkit's date entry fills in one part after the other, and typing "31.3.2005" over a day of February
// there gives the third of January of the year 3200. Here the line is an ordinary one: what people type is
// read as a whole, when they leave it or when somebody asks for the value, by the same rules as every other
// date in the program.
class DateField::Edit : public QDateEdit {
 public:
    Edit(bool mayBeEmpty, QWidget* parent) : QDateEdit(parent), mayBeEmpty_(mayBeEmpty) {
        // The line's own caret, not one that jumps from part to part.
        disconnect(lineEdit(), SIGNAL(cursorPositionChanged(int, int)), this, nullptr);
        connect(lineEdit(), &QLineEdit::textChanged, this, [this] { showWhetherReadable(); });
        keepDressed(*lineEdit(), [this] { showWhetherReadable(); });
    }

    void showWhetherReadable() {
        QPalette colours;
        if (!hasAcceptableInput()) {
            colours.setColor(QPalette::Text, readable(QColor(0xC8, 0x40, 0x2F), QApplication::palette()));
        }
        lineEdit()->setPalette(colours);
    }

    // What was typed is read now; where it is no date, the one before comes back.
    void settle() {
        interpretText();
        showWhetherReadable();
    }

    void openCalendar() {
        QStyleOptionComboBox box;
        box.initFrom(this);
        box.editable = true;
        const QRect arrow =
            style()->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxArrow, this);
        const QPointF at = arrow.center();
        QMouseEvent press(QEvent::MouseButtonPress, at, mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        mousePressEvent(&press);
    }

    bool allSelected() const { return lineEdit()->selectedText() == lineEdit()->text(); }

    QValidator::State validate(QString& text, int&) const override {
        const bool empty = text.trimmed().isEmpty() && mayBeEmpty_;
        return empty || readDate(text) ? QValidator::Acceptable : QValidator::Intermediate;
    }

    QDateTime dateTimeFromText(const QString& text) const override {
        const std::optional<dao::Date> read = readDate(text);
        return (read ? toQDate(*read) : kNothing).startOfDay();
    }

    // Up and down count the part that the caret stands in.
    void stepBy(int steps) override {
        settle();
        if (date() == kNothing) {
            setDate(QDate::currentDate());
            return;
        }
        const int part = partAt(lineEdit()->cursorPosition());
        const QString parts = partsOfFormat();
        const QChar unit = part < parts.size() ? parts.at(part) : QLatin1Char('d');
        QDate counted = date().addDays(steps);
        if (unit == QLatin1Char('M')) {
            counted = date().addMonths(steps);
        } else if (unit == QLatin1Char('y')) {
            counted = date().addYears(steps);
        }
        setDate(std::clamp(counted, kFirst, kLast));
        selectPart(part);
    }

 protected:
    StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    void keyPressEvent(QKeyEvent* event) override { QAbstractSpinBox::keyPressEvent(event); }
    void focusInEvent(QFocusEvent* event) override {
        QAbstractSpinBox::focusInEvent(event);
        if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason) {
            lineEdit()->selectAll();
        }
    }
    void focusOutEvent(QFocusEvent* event) override {
        QDateEdit::focusOutEvent(event);
        showWhetherReadable();
    }
    // Enter and Tab walk from field to field of the pane, not from day to month to year.
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }

 private:
    QString partsOfFormat() const {  // "dMy", "Mdy"
        QString parts;
        for (const QChar letter : displayFormat()) {
            if (letter.isLetter() && !parts.contains(letter)) {
                parts.append(letter);
            }
        }
        return parts;
    }
    int partAt(int position) const {
        const QString before = lineEdit()->text().left(position);
        int part = 0;
        for (qsizetype i = 1; i < before.size(); ++i) {
            part += before.at(i - 1).isDigit() && !before.at(i).isDigit() ? 1 : 0;
        }
        return part;
    }
    void selectPart(int part) {
        const QString text = lineEdit()->text();
        int from = 0;
        const int length = static_cast<int>(text.size());
        while (from < length && (partAt(from) < part || !text.at(from).isDigit())) {
            ++from;
        }
        int to = from;
        while (to < length && text.at(to).isDigit()) {
            ++to;
        }
        // Backwards: the caret stays inside the part.
        lineEdit()->setSelection(to, from - to);
    }

    bool mayBeEmpty_;
};

DateField::DateField(bool checkable, QWidget* parent)
    : QWidget(parent), field_(new Edit(checkable, this)), edit_(field_), last_(QDate::currentDate()) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    if (checkable) {
        check_ = new QCheckBox(this);
        check_->setObjectName(QStringLiteral("Check"));
        check_->setAccessibleName(tr("Date is set"));
        check_->setFocusPolicy(Qt::NoFocus);  // Space does it from the date
        row->addWidget(check_);
        connect(check_, &QCheckBox::clicked, this, [this](bool checked) {
            setValue(checked ? std::optional(last_) : std::nullopt);
            edit_->setFocus();
        });
    }
    row->addWidget(edit_, 1);
    edit_->setObjectName(QStringLiteral("Date"));
    edit_->setDisplayFormat(shortFormat());
    edit_->setDateRange(kNothing, kLast);
    edit_->setSpecialValueText(QStringLiteral(" "));
    edit_->setCalendarPopup(true);
    edit_->setKeyboardTracking(false);
    edit_->setDate(kNothing);
    wheelNeedsFocus(edit_);
    edit_->installEventFilter(this);
    edit_->calendarWidget()->installEventFilter(this);
    setFocusPolicy(Qt::ClickFocus);  // a label's letter leads nowhere that takes no focus itself
    setFocusProxy(edit_);
    connect(edit_, &QDateEdit::dateChanged, this, &DateField::dateChanged);
    if (!checkable) {
        setValue(last_);
    }
}

std::optional<QDate> DateField::value() const {
    field_->settle();
    return null_ ? std::nullopt : std::optional(edit_->date());
}

void DateField::setValue(const std::optional<QDate>& date) {
    edit_->setDate(date && date->isValid() ? std::clamp(*date, kFirst, kLast) : kNothing);
    field_->showWhetherReadable();
}

void DateField::dateChanged() {
    null_ = edit_->date() == kNothing;
    if (!null_) {
        last_ = edit_->date();
    }
    if (check_) {
        check_->setChecked(!null_);
    }
    emit valueChanged();
}

bool DateField::eventFilter(QObject* watched, QEvent* event) {
    if (watched == edit_) {
        if (event->type() == QEvent::KeyPress && keyPressed(static_cast<QKeyEvent&>(*event))) {
            return true;
        }
        if (event->type() == QEvent::FocusOut) {
            focusOut(static_cast<QFocusEvent&>(*event));
        }
    } else if (event->type() == QEvent::Show && null_) {
        // An empty date opens on this month; nothing is chosen until somebody chooses.
        QCalendarWidget* calendar = edit_->calendarWidget();
        const QSignalBlocker quiet(calendar);
        calendar->setSelectedDate(QDate::currentDate());
    }
    return QWidget::eventFilter(watched, event);
}

// True where the key is used up.
bool DateField::keyPressed(const QKeyEvent& event) {
    const int key = event.key();
    const bool opens = key == Qt::Key_F4 || (key == Qt::Key_Down && event.modifiers() == Qt::AltModifier);
    if (opens) {
        field_->openCalendar();
        return true;
    }
    const bool clears = key == Qt::Key_Delete || key == Qt::Key_Backspace;
    if (check_ && clears && field_->allSelected()) {
        setValue(std::nullopt);
        return true;
    }
    if (check_ && key == Qt::Key_Space) {
        field_->settle();
        setValue(null_ ? std::optional(last_) : std::nullopt);
        return true;
    }
    return false;
}

void DateField::focusOut(const QFocusEvent& event) {
    if (event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason) {
        return;
    }
    const QWidget* now = QApplication::focusWidget();
    if (now != this && !isAncestorOf(now)) {
        emit focusLeft();
    }
}

}  // namespace platform
