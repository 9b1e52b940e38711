#include "platform/dao/postgres/writer_commit.h"

#include <algorithm>
#include <thread>

#include "platform/dao/failure.h"
#include "platform/dao/postgres/loss.h"

namespace dao::postgres {
namespace {

// How long a commit whose answer was lost is asked after: within a minute a server notices that a connection
// is dead.
constexpr std::chrono::seconds kToLearn{60};
constexpr std::chrono::milliseconds kNap{100};

}  // namespace

void WriterCommit::note(Written what) {
    written_ = std::max(written_, what);
}

std::vector<Step> WriterCommit::raising(Connection& server) const {
    if (written_ == Written::kNothing) {
        return {};
    }
    link_.writer().foreseeRaise(server);
    return {link_.writer().raising(server, written_)};
}

bool WriterCommit::commit(const std::function<bool()>& commit) {
    bool raised = true;
    if (!withoutLoss([&] { raised = commit(); })) {
        needCommitted();
    } else if (raised && written_ != Written::kNothing) {
        link_.writer().settle();
    }
    forget();
    return raised;
}

// The server may have written all of it and could not say so any more.
void WriterCommit::needCommitted() const {
    const std::string where =
        "The server of " + placeText(link_.address()) + " was lost in the middle of a change; ";
    const std::optional<bool> committed = written_ == Written::kNothing ? false : askWhether();
    if (committed == false) {
        fail(errDiskIo, where + "nothing of it was written.");
    }
    if (!committed) {
        fail(errDiskIo, where + "whether it was written is not known: look before doing it again.");
    }
}

std::optional<bool> WriterCommit::askWhether() const {
    std::optional<bool> committed;
    const auto until = Clock::now() + kToLearn;
    while (!committed && Clock::now() < until) {
        const QuietErrors quiet;
        try {
            committed = link_.writer().wasCommitted(link_.anyConnection());
        } catch (const Error&) {
            // It is not there yet.
        }
        if (!committed) {
            std::this_thread::sleep_for(kNap);
        }
    }
    return committed;
}

}  // namespace dao::postgres
