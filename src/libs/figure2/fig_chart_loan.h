// fig_chart_loan.h: chart data that is borrowed for as long as it is looked at.
// Layer: tokens. Internal to the library.
#pragma once

#include "ZemFig2TokenInterface.h"

namespace Zem::Fig2 {

/// Borrows the data of a chart token and gives them back at the end of the scope.
class ChartLoan
{
public:
    /// `tokens` may be null; then, and for an unknown token, nothing is borrowed.
    ChartLoan(FigureTokenInterface const *tokens, QString const &token)
        : tokens_(tokens), token_(token), data_(tokens ? tokens->getChart(token) : nullptr)
    {
    }
    ~ChartLoan()
    {
        if (data_)
            tokens_->releaseChart(token_);
    }
    ChartLoan(ChartLoan const &) = delete;
    ChartLoan &operator=(ChartLoan const &) = delete;

    /// Null when nothing is borrowed.
    ChartData const *get() const { return data_; }
    ChartData const *operator->() const { return data_; }
    explicit operator bool() const { return data_ != nullptr; }

private:
    FigureTokenInterface const *tokens_;
    QString const token_;
    ChartData const *data_;
};

} // namespace Zem::Fig2
