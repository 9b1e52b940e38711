#include "records/service_entry_fields.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QToolButton>
#include <utility>
#include <vector>

#include "common/window_helpers.h"
#include "platform/controls/keys.h"
#include "platform/controls/link_label.h"
#include "records/field_labels.h"
#include "records/service_date_picker.h"
#include "records/service_kinds_list.h"

namespace {

constexpr int kFirstPictureTopic = 314;  // Image1(0) to Image1(2)

bool isDate(const ServiceField& field) {
    return field.kind == ServiceKind::Date || field.kind == ServiceKind::OpenDate;
}

bool isFigure(const ServiceField& field) {
    return field.kind == ServiceKind::Amount || field.kind == ServiceKind::Number;
}

}  // namespace

ServiceEntryFields::ServiceEntryFields(QWidget& window, QGridLayout& grid, FieldLabels& labels)
    : window_(window), grid_(grid), labels_(labels) {}

ServiceEntryFields::~ServiceEntryFields() = default;

void ServiceEntryFields::addLines() {
    std::vector<std::pair<QLineEdit*, QToolButton*>> dates;
    for (const ServiceField& field : serviceFields()) {
        if (isDate(field)) {
            QLineEdit* line = addLine(field);
            dates.emplace_back(line, addPicture(field, *line));
        } else if (isFigure(field)) {
            addLine(field)->setAlignment(Qt::AlignRight);
        }
    }
    picker_ = std::make_unique<ServiceDatePicker>(window_);
    for (const auto& [line, picture] : dates) {
        picker_->serve(line, picture);
    }
}

QLineEdit* ServiceEntryFields::addLine(const ServiceField& field) {
    const ServiceField::Entry& entry = field.entry;
    auto* line = new QLineEdit(&window_);
    line->setObjectName(arrayName("Text1", entry.number));
    line->setProperty(kTopicProperty, entry.helpTopic);
    grid_.addWidget(labels_.add(entry.number, QString::fromLatin1(entry.caption), line), entry.row,
                    entry.column);
    grid_.addWidget(line, entry.row, entry.column + 1);
    line->installEventFilter(this);
    connect(line, &QLineEdit::textChanged, this, &ServiceEntryFields::changed);
    widgets_[field.name] = line;
    return line;
}

QToolButton* ServiceEntryFields::addPicture(const ServiceField& field, const QLineEdit& line) {
    const ServiceField::Entry& entry = field.entry;
    auto* button = new QToolButton(&window_);
    button->setObjectName(arrayName("Image1", entry.number));
    button->setAccessibleName(QStringLiteral("Pick: ") + line.accessibleName());
    button->setToolTip(QStringLiteral("Alt+Down"));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setProperty(kTopicProperty, kFirstPictureTopic + entry.number);
    grid_.addWidget(button, entry.row, entry.column + 2);
    return button;
}

void ServiceEntryFields::addDescriptionAndKinds() {
    for (const ServiceField& field : serviceFields()) {
        if (field.kind == ServiceKind::Text) {
            addDescription(field);
        } else if (field.kind == ServiceKind::Types) {
            addKinds(field);
        }
    }
}

void ServiceEntryFields::addDescription(const ServiceField& field) {
    const ServiceField::Entry& entry = field.entry;
    auto* box = new QPlainTextEdit(&window_);
    box->setObjectName(arrayName("Text1", entry.number));
    box->setProperty(kTopicProperty, entry.helpTopic);
    box->setTabChangesFocus(true);
    box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    box->setMinimumHeight(window_.fontMetrics().height() * 8);
    grid_.addWidget(labels_.add(entry.number, QString::fromLatin1(entry.caption), box), entry.row,
                    entry.column, 1, 3, Qt::AlignBottom | Qt::AlignLeft);
    const int below = serviceField(ServiceColumn::Types).entry.row + 2;  // the list of kinds ends there too
    grid_.addWidget(box, entry.row + 1, entry.column, below - entry.row - 1, 3);
    widgets_[field.name] = box;
}

void ServiceEntryFields::addKinds(const ServiceField& field) {
    const ServiceField::Entry& entry = field.entry;
    kinds_ = std::make_unique<ServiceKindsList>(window_);
    QListWidget* list = kinds_->list();
    list->setProperty(kTopicProperty, entry.helpTopic);
    grid_.addWidget(labels_.add(entry.number, QString::fromLatin1(entry.caption), list), entry.row,
                    entry.column, 1, 2);
    grid_.addWidget(kinds_->deselectLink(), entry.row, entry.column + 2, Qt::AlignRight);
    grid_.addWidget(list, entry.row + 1, entry.column, 1, 3);
    widgets_[field.name] = list;
}

QString ServiceEntryFields::text(ServiceColumn column) const {
    switch (serviceField(column).kind) {
        case ServiceKind::Text:
            return static_cast<QPlainTextEdit*>(widgets_[column])->toPlainText();
        case ServiceKind::Types:
            return kinds_->selected();
        default:
            return static_cast<QLineEdit*>(widgets_[column])->text();
    }
}

void ServiceEntryFields::setText(ServiceColumn column, const QString& text) {
    switch (serviceField(column).kind) {
        case ServiceKind::Text:
            static_cast<QPlainTextEdit*>(widgets_[column])->setPlainText(text);
            break;
        case ServiceKind::Types:
            kinds_->select(text);
            break;
        default:
            static_cast<QLineEdit*>(widgets_[column])->setText(text);
    }
}

void ServiceEntryFields::show(const ServiceTexts& service) {
    const QSignalBlocker silence(this);
    for (const ServiceField& field : serviceFields()) {
        setText(field.name, service[field.name]);
    }
}

QWidgetList ServiceEntryFields::inTabOrder() const {
    QWidgetList order;
    for (const ServiceField& field : serviceFields()) {
        if (isDate(field) || isFigure(field)) {
            order.append(widgets_[field.name]);
        }
    }
    // The kinds are clicked before the words are looked for.
    return order << widgets_[ServiceColumn::Types] << widgets_[ServiceColumn::Comments];
}

// Only what belongs in a number comes through in the figures' lines; the point key of the numeric pad, and
// the point, write the separator that this user's numbers have.
bool ServiceEntryFields::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        for (const ServiceField& field : serviceFields()) {
            if (watched == widgets_[field.name] && isFigure(field)) {
                return platform::filterNumberKey(*static_cast<QLineEdit*>(watched),
                                                 *static_cast<QKeyEvent*>(event),
                                                 {.decimals = field.kind == ServiceKind::Amount});
            }
        }
    }
    return QObject::eventFilter(watched, event);
}
