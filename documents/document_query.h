#pragma once

#include <QString>

class ServiceView;

// The rows of a document: what was drawn for the selected service, with prices at the rate on screen and the
// service's tax worked into them. Throws platform::RunError 13 where the tax is no number.
QString documentQuery(const ServiceView& view);
