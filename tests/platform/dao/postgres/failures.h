#pragma once

#include <functional>
#include <string>

#include "platform/dao/error.h"
#include "platform/dao/postgres/server_error.h"

// How something failed.
struct Failure {
    int number = 0;  // 0: it did not
    std::string sentence;
    bool lost = false;

    bool says(const std::string& part) const { return sentence.find(part) != std::string::npos; }
};

inline Failure failureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const dao::postgres::ConnectionLost& error) {
        return {error.Number(), error.Description(), true};
    } catch (const dao::Error& error) {
        return {error.Number(), error.Description(), false};
    }
    return {};
}
