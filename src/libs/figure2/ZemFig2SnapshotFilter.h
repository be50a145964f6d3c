// ZemFig2SnapshotFilter.h: which elements of a figure go into a snapshot.
// Layer: document.
#pragma once

namespace Zem::Fig2 {

class Element;

class SnapshotElementFilter
{
public:
    virtual ~SnapshotElementFilter();
    /// True means that the element stays out of the snapshot.
    virtual bool isFiltered(Element const *element) const = 0;
};

/// Takes over all elements.
class SnapshotAllElementFilter : public SnapshotElementFilter
{
public:
    bool isFiltered(Element const *element) const override;
};

} // namespace Zem::Fig2
