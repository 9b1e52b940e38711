#pragma once

namespace print_invoice {

// The kinds of document.
constexpr int kProForma = 0, kInvoice = 1;

}  // namespace print_invoice
