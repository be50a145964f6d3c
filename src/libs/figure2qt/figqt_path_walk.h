// figqt_path_walk.h: the steps of a path.
#pragma once

#include <QtGui/QPainterPath>

namespace Zem::Fig2Qt {

/// Calls moveTo(point), lineTo(point), curveTo(point, point, point) and close() of the visitor. A part of three points
/// or more that ends where it begins is closed, as it is for a QPainter.
template <class Visitor>
void walkPart(QPainterPath const &path, int begin, int end, Visitor &visitor)
{
    bool const closed = end - begin > 2 && QPointF(path.elementAt(begin)) == QPointF(path.elementAt(end - 1));
    for (int i = begin; i < end; ++i) {
        QPainterPath::Element const &element = path.elementAt(i);
        if (element.isMoveTo()) {
            visitor.moveTo(element);
        } else if (element.isCurveTo()) {
            visitor.curveTo(element, path.elementAt(i + 1), path.elementAt(i + 2));
            i += 2;
        } else if (!closed || i + 1 < end) {
            visitor.lineTo(element);
        }
    }
    if (closed)
        visitor.close();
}

template <class Visitor>
void walkPath(QPainterPath const &path, Visitor &visitor)
{
    int begin = 0;
    for (int i = 1; i <= path.elementCount(); ++i) {
        if (i < path.elementCount() && !path.elementAt(i).isMoveTo())
            continue;
        walkPart(path, begin, i, visitor);
        begin = i;
    }
}

inline bool hasCurves(QPainterPath const &path)
{
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).isCurveTo())
            return true;
    }
    return false;
}

} // namespace Zem::Fig2Qt
