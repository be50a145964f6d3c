// fig_loan.h: data of a token that are borrowed for as long as they are looked at.
// Layer: tokens. Internal to the library.
#pragma once

#include "ZemFig2TokenInterface.h"

namespace Zem::Fig2 {

/// Borrows the data of a token and gives them back at the end of the scope.
template <class Data, Data const *(FigureTokenInterface::*BORROW)(QString const &) const,
          void (FigureTokenInterface::*RELEASE)(QString const &) const>
class Loan
{
public:
    /// `tokens` may be null; then, and for an unknown token, nothing is borrowed.
    Loan(FigureTokenInterface const *tokens, QString const &token)
        : tokens_(tokens), token_(token), data_(tokens ? (tokens->*BORROW)(token) : nullptr)
    {
    }
    ~Loan()
    {
        if (data_)
            (tokens_->*RELEASE)(token_);
    }
    Loan(Loan const &) = delete;
    Loan &operator=(Loan const &) = delete;

    /// Null when nothing is borrowed.
    Data const *get() const { return data_; }
    Data const *operator->() const { return data_; }
    explicit operator bool() const { return data_ != nullptr; }

private:
    FigureTokenInterface const *tokens_;
    QString const token_;
    Data const *data_;
};

using ChartLoan = Loan<ChartData, &FigureTokenInterface::getChart, &FigureTokenInterface::releaseChart>;
using ImageLoan = Loan<ImageData, &FigureTokenInterface::getImage, &FigureTokenInterface::releaseImage>;
using SnapshotLoan = Loan<SnapshotData, &FigureTokenInterface::getSnapshot, &FigureTokenInterface::releaseSnapshot>;

} // namespace Zem::Fig2
