#pragma once

class QWidget;

// The topics of the windows that the help explains as a whole.
enum WindowTopic {
    CatalogueTopic = 7020,
    ProductTopic,
    UnitsTopic,
    PriceListTopic,
    DocumentTopic,
    DrawTopic,
    CriticalTopic,
    PreviewTopic,
    LegendTopic,
    TipTopic,
    AboutTopic,
    HelpTopic,
};

// From now on F1 in the window opens its topic.
void explainByF1(QWidget* window, WindowTopic topic);
