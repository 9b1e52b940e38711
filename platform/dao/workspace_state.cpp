#include "platform/dao/workspace_state.h"

#include <exception>
#include <vector>

#include "platform/dao/failure.h"
#include "platform/dao/open_file.h"
#include "platform/dao/open_files.h"

namespace dao::workspace {
namespace {

struct State {
    int depth = 0;
    // A file whose last window closes in the middle stays open until the end.
    std::vector<std::shared_ptr<OpenFile>> files;
};

State& state() {
    static auto* const kState = new State;
    return *kState;
}

void endLevel() {
    if (--state().depth == 0) {
        state().files.clear();
    }
}

}  // namespace

void begin() {
    if (state().depth == 0) {
        for (std::shared_ptr<OpenFile>& file : OpenFiles::all()) {
            if (file->store().writable()) {
                state().files.push_back(std::move(file));
            }
        }
    }
    std::size_t begun = 0;
    try {
        for (; begun < state().files.size(); ++begun) {
            state().files[begun]->transaction().beginWorkspace();
        }
    } catch (...) {
        while (begun-- > 0) {
            state().files[begun]->transaction().rollbackWorkspace();
        }
        if (state().depth == 0) {
            state().files.clear();
        }
        throw;
    }
    ++state().depth;
}

void commit() {
    if (state().depth == 0) {
        fail(errTransactionWithoutBegin);
    }
    std::exception_ptr failure;
    for (const std::shared_ptr<OpenFile>& file : state().files) {
        if (failure != nullptr) {
            file->transaction().rollbackWorkspace();
            continue;
        }
        try {
            file->transaction().commitWorkspace();
        } catch (const Error&) {
            failure = std::current_exception();
        }
    }
    endLevel();
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

void rollback() {
    if (state().depth == 0) {
        fail(errTransactionWithoutBegin);
    }
    for (const std::shared_ptr<OpenFile>& file : state().files) {
        file->transaction().rollbackWorkspace();
    }
    endLevel();
}

void join(const std::shared_ptr<OpenFile>& file) {
    if (state().depth == 0 || !file->store().writable()) {
        return;
    }
    for (int level = 0; level < state().depth; ++level) {
        file->transaction().beginWorkspace();
    }
    state().files.push_back(file);
}

}  // namespace dao::workspace
