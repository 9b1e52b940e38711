#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

// "--name value" pairs and plain words, as the tools take them.
class Arguments {
 public:
    // Throws std::invalid_argument for a name that is not among `names`, and for one without a value.
    Arguments(int argc, char** argv, const std::vector<std::string>& names) {
        for (int i = 1; i < argc; ++i) {
            const std::string word = argv[i];
            if (word.rfind("--", 0) != 0) {
                plain_.push_back(word);
                continue;
            }
            const std::string name = word.substr(2);
            bool known = false;
            for (const std::string& candidate : names) {
                known = known || candidate == name;
            }
            if (!known || i + 1 == argc) {
                throw std::invalid_argument(known ? word + " needs a value" : "unknown option " + word);
            }
            named_[name] = argv[++i];
        }
    }

    const std::vector<std::string>& plain() const { return plain_; }
    bool has(const std::string& name) const { return named_.count(name) != 0; }
    const std::string& text(const std::string& name) const {
        const auto found = named_.find(name);
        if (found == named_.end()) {
            throw std::invalid_argument("--" + name + " is missing");
        }
        return found->second;
    }
    int number(const std::string& name, int otherwise) const {
        if (!has(name)) {
            return otherwise;
        }
        std::size_t read = 0;
        int value = 0;
        try {
            value = std::stoi(text(name), &read);
        } catch (const std::exception&) {
            read = 0;
        }
        if (read == 0 || read != text(name).size()) {
            throw std::invalid_argument("--" + name + " is no number: " + text(name));
        }
        return value;
    }

 private:
    std::vector<std::string> plain_;
    std::map<std::string, std::string> named_;
};
