#pragma once

#include <memory>

namespace dao {

class OpenFile;

// The one transaction of the process, over all its open files.
namespace workspace {

void begin();
void commit();
void rollback();
// A file opened in the middle of a transaction takes part in it.
void join(const std::shared_ptr<OpenFile>& file);

}  // namespace workspace
}  // namespace dao
