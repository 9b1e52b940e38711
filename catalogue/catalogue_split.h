#pragma once

class QWidget;
struct CatalogueParts;
namespace platform {
class Splitter;
class Trap;
}  // namespace platform

// The two bars between the panes of the catalogue, and where the person has drawn them to.
class CatalogueSplit {
 public:
    CatalogueSplit(QWidget* window, const CatalogueParts& parts);
    platform::Splitter* betweenLists() const { return betweenLists_; }  // of groups and manufacturers
    platform::Splitter* overProducts() const { return overProducts_; }  // holds all three panes

    void load();
    void save(platform::Trap& step) const;

 private:
    platform::Splitter* betweenLists_;
    platform::Splitter* overProducts_;
};
