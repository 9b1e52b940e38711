#pragma once

class MainBars;
class MainStatus;
class MainView;
class ShopFilter;

// The quick filters in the bars: choosing one and dropping it, and what the bars say of the one in force.
class FilterMenu {
 public:
    // All of these outlive it.
    FilterMenu(ShopFilter& filter, MainBars& bars, MainStatus& status, MainView& window);

    // By its place in the menu, separators counted; 0 goes back to the whole shop. A place without a filter
    // is told in a box.
    void mnuQuickSearch_Click(int index);
    void drop();  // by the toolbar's button: nothing more where none is in force
    void showNoFilter();

 private:
    void choose(int number);

    ShopFilter& filter_;
    MainBars& bars_;
    MainStatus& status_;
    MainView& window_;
};
