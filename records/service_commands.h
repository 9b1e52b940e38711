#pragma once

#include <QString>
#include <memory>

#include "records/service_values.h"

class frmDetails;
class QWidget;
class ServiceDetails;
class ServiceListOwner;
class ServiceView;
namespace platform {
class DataControl;
class ListView;
class Trap;
}  // namespace platform

// What a person does with the services of the list: adding, changing and deleting them, and the windows for
// their parts and documents. The list shows what was entered before the database has it.
class ServiceCommands {
 public:
    // All of them outlive this one. Boxes and windows stand over `window`.
    ServiceCommands(QWidget& window, platform::ListView& list, platform::DataControl& services,
                    ServiceListOwner& owner, const ServiceView& view, ServiceDetails& details);
    ~ServiceCommands();

    void makeEditor();  // one instance, until dropEditor
    void dropEditor();
    frmDetails* editor() const { return editor_.get(); }

    // Nothing, each of them, where a selection is needed and there is none.
    void editSelected();
    void addNew();
    void deleteSelected();
    // The parts drawn for the selected service; their total becomes its price.
    void openRequisition();
    void openDocument(bool invoice);  // or the quotation

 private:
    bool findForEdit(qint32 id);
    void takeFromEditor(qint32 id, bool edited);
    void showInList(const QString& key, bool edited, const ServiceTexts& service);
    void writeAndSettle(const ServiceTexts& service);
    void showWhatIsLeft(platform::Trap& step);

    QWidget& window_;
    platform::ListView& list_;
    platform::DataControl& services_;
    ServiceListOwner& owner_;
    const ServiceView& view_;
    ServiceDetails& details_;
    std::unique_ptr<frmDetails> editor_;
};
