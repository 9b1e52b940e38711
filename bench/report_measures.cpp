// The text report of all clients, their computers and services.
#include <fstream>

#include "our_window.h"
#include "plain_report.h"
#include "platform/system/files.h"
#include "platform/system/launch.h"
#include "records/frmMain.h"
#include "shop.h"

namespace {

// Five million lines; pieces of some twenty of them will do to tell where two reports part.
Lines piecesOf(const std::string& path) {
    Lines pieces;
    std::ifstream file(path);
    for (std::string piece(2000, '\0'); file.read(piece.data(), 2000) || file.gcount() > 0;) {
        pieces.emplace_back(piece, 0, static_cast<std::size_t>(file.gcount()));
    }
    return pieces;
}

class ReportOurs : public Side {
 public:
    explicit ReportOurs(Shop&) {
        frmMain& window = mainWindow();
        window.choices.report.ShowOnlySelectedClient = window.choices.report.ShowOnlySelectedComputer =
            window.choices.report.ShowOnlySelectedService = false;
        window.shop.filter.RefreshAll();
        platform::setShellExecuteHook([](const QString&) { return 33; });  // nothing opens it
    }
    ~ReportOurs() override { platform::setShellExecuteHook({}); }
    void run() override { mainWindow().report.GenerateReport(); }
    Lines result() override {
        return piecesOf((platform::programFolder() + QStringLiteral("/Report.txt")).toStdString());
    }
};

class ReportPlain : public Side {
 public:
    explicit ReportPlain(Shop& shop) : report_(shop.plain()) {}
    void run() override { report_.write(path_); }
    Lines result() override { return piecesOf(path_); }

 private:
    PlainReport report_;
    const std::string path_ = (platform::programFolder() + QStringLiteral("/PlainReport.txt")).toStdString();
};

}  // namespace

std::vector<Measure> reportMeasures() {
    return {{"the text report of all clients", 2, side<ReportOurs>(), side<ReportPlain>(), 7}};
}
