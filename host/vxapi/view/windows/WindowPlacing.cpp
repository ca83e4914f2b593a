// SPDX-License-Identifier: MIT
#include "host/vxapi/view/windows/WindowPlacing.h"

#include "host/vxapi/view/canvas/KeepInSight.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

/// So much of a title bar is enough to take a window by.
constexpr int TITLE_HEIGHT = 28;
constexpr int TITLE_WIDTH = 120;
/// Of more windows the first ones are looked at: among so many there is no room anyway.
constexpr int MAX_WINDOWS = 10;

double areaOf(const QSize &size)
{
    return double(std::max(0, size.width())) * std::max(0, size.height());
}

double areaOf(const QRect &rect)
{
    return areaOf(rect.size());
}

bool isFree(const QRect &rect, const QVector<QRect> &occupied)
{
    return std::none_of(occupied.begin(), occupied.end(),
                        [&rect](const QRect &other) { return rect.intersects(other); });
}

/// The edges between which an empty rectangle can lie, in order.
QVector<int> edges(int from, int to, const QVector<QRect> &occupied, bool horizontal)
{
    QVector<int> all = {from, to};
    for (const QRect &rect : occupied) {
        const int begin = horizontal ? rect.x() : rect.y();
        const int end = begin + (horizontal ? rect.width() : rect.height());
        for (const int edge : {begin, end}) {
            if (edge > from && edge < to && !all.contains(edge))
                all.append(edge);
        }
    }
    std::sort(all.begin(), all.end());
    return all;
}

/// Calls `visit` with every rectangle between such edges that touches none of the occupied ones.
template <typename Visit>
void forFreeRects(const QRect &area, const QVector<QRect> &occupied, Visit visit)
{
    const QVector<int> xs = edges(area.x(), area.x() + area.width(), occupied, true);
    const QVector<int> ys = edges(area.y(), area.y() + area.height(), occupied, false);
    for (int left = 0; left < xs.size(); ++left) {
        for (int right = left + 1; right < xs.size(); ++right) {
            for (int top = 0; top < ys.size(); ++top) {
                for (int bottom = top + 1; bottom < ys.size(); ++bottom) {
                    const QRect rect(xs[left], ys[top], xs[right] - xs[left], ys[bottom] - ys[top]);
                    if (isFree(rect, occupied))
                        visit(rect);
                }
            }
        }
    }
}

double largestFree(const QRect &area, const QVector<QRect> &occupied)
{
    double largest = 0.0;
    forFreeRects(area, occupied,
                 [&largest](const QRect &rect) { largest = std::max(largest, areaOf(rect)); });
    return largest;
}

/// Whether enough of a title bar is seen beside the window above it.
bool isTitleSeen(const QRect &below, const QRect &above)
{
    const QRect title(below.x(), below.y(), below.width(), TITLE_HEIGHT);
    const QRect hidden = title.intersected(above);
    return hidden.isEmpty() || hidden.height() < TITLE_HEIGHT / 2 ||
           title.width() - hidden.width() >= TITLE_WIDTH;
}

/// Where it covers least, when it has to cover something.
QRect leastCover(const windowplacing::Wish &wish, const QRect &area, const QVector<QRect> &occupied)
{
    const QSize size = wish.enough.expandedTo(QSize(1, 1));
    QVector<int> xs = edges(area.x(), area.x() + area.width(), occupied, true);
    QVector<int> ys = edges(area.y(), area.y() + area.height(), occupied, false);
    xs.append(area.x() + area.width() - size.width());
    ys.append(area.y() + area.height() - size.height());
    // Beside the beginning of another title bar, so that it stays in reach.
    for (const QRect &rect : occupied) {
        xs.append(rect.x() + TITLE_WIDTH);
        ys.append(rect.y() + TITLE_HEIGHT);
    }
    QRect best;
    double least = std::numeric_limits<double>::infinity();
    for (const int x : qAsConst(xs)) {
        for (const int y : qAsConst(ys)) {
            const QRect rect(placeInSight(QPoint(x, y), size, area), size);
            double cost = 0.0;
            for (const QRect &other : occupied) {
                cost += areaOf(rect.intersected(other)) / areaOf(other);
                if (!isTitleSeen(other, rect))
                    cost += 100.0;
            }
            if (cost < least) {
                least = cost;
                best = rect;
            }
        }
    }
    return best;
}

} // namespace

QRect windowplacing::freePlace(const Wish &wish, const QRect &area, const QVector<QRect> &windows)
{
    const Wish fitting{wish.wanted.boundedTo(area.size()).expandedTo(wish.enough), wish.enough};
    const QVector<QRect> occupied = windows.mid(0, MAX_WINDOWS);
    QRect best;
    double most = 0.0;
    QVector<QRect> candidates;
    forFreeRects(area, occupied, [&](const QRect &room) {
        const QSize size = fitting.wanted.boundedTo(room.size());
        const QRect rect(room.topLeft(), size);
        if (size.width() >= fitting.enough.width() && size.height() >= fitting.enough.height() &&
            !candidates.contains(rect))
            candidates.append(rect);
    });
    for (const QRect &rect : qAsConst(candidates)) {
        const double got = areaOf(rect) / areaOf(fitting.wanted);
        const double left = largestFree(area, QVector<QRect>(occupied) << rect) / areaOf(area);
        if (got + left > most) {
            most = got + left;
            best = rect;
        }
    }
    return best.isValid() ? best : leastCover(fitting, area, occupied);
}

namespace {

/// The windows (by their index) in columns: the tallest first, each into the column that is the lowest so far.
QVector<QVector<int>> columnsOf(const QVector<QSize> &least, int count)
{
    QVector<int> order(least.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&least](int one, int other) { return least[one].height() > least[other].height(); });
    QVector<QVector<int>> columns(count);
    QVector<int> heights(count, 0);
    for (const int index : qAsConst(order)) {
        const int lowest = int(std::min_element(heights.begin(), heights.end()) - heights.begin());
        columns[lowest].append(index);
        heights[lowest] += least[index].height();
    }
    return columns;
}

/// Lengths that fill `total`, none below its least one, as equal as they can be; empty when there are none.
QVector<int> shares(const QVector<int> &least, int total)
{
    if (std::accumulate(least.begin(), least.end(), 0) > total)
        return {};
    QVector<int> lengths = least;
    int rest = total - std::accumulate(least.begin(), least.end(), 0);
    while (rest > 0) { // each step to the shortest, up to the next longer one
        const int shortest = *std::min_element(lengths.begin(), lengths.end());
        const int count = int(std::count(lengths.begin(), lengths.end(), shortest));
        int next = std::numeric_limits<int>::max();
        for (const int length : qAsConst(lengths)) {
            if (length > shortest)
                next = std::min(next, length);
        }
        const int step = std::min(next - shortest, std::max(1, rest / count));
        for (int &length : lengths) {
            if (length == shortest && rest > 0) {
                const int added = std::min(step, rest);
                length += added;
                rest -= added;
            }
        }
    }
    return lengths;
}

/// Empty when the windows do not fit in so many columns.
QVector<QRect> tilesInColumns(const QRect &area, const QVector<QSize> &least, int count)
{
    const QVector<QVector<int>> columns = columnsOf(least, count);
    QVector<int> leastWidths;
    for (const QVector<int> &column : columns) {
        int width = 0;
        for (const int index : column)
            width = std::max(width, least[index].width());
        leastWidths.append(width);
    }
    const QVector<int> widths = shares(leastWidths, area.width());
    if (widths.isEmpty())
        return {};
    QVector<QRect> rects(least.size());
    int x = area.x();
    for (int i = 0; i < count; ++i) {
        QVector<int> leastHeights;
        for (const int index : columns[i])
            leastHeights.append(least[index].height());
        const QVector<int> heights = shares(leastHeights, area.height());
        if (heights.isEmpty())
            return {};
        int y = area.y();
        for (int row = 0; row < columns[i].size(); ++row) {
            rects[columns[i][row]] = QRect(x, y, widths[i], heights[row]);
            y += heights[row];
        }
        x += widths[i];
    }
    return rects;
}

} // namespace

QVector<QRect> windowplacing::tiles(const QRect &area, const QVector<QSize> &least)
{
    // As near to squares as the least sizes allow.
    const double ideal = std::sqrt(least.size() * double(area.width()) / std::max(1, area.height()));
    QVector<int> counts(least.size());
    std::iota(counts.begin(), counts.end(), 1);
    std::stable_sort(counts.begin(), counts.end(), [ideal](int one, int other) {
        return std::fabs(one - ideal) < std::fabs(other - ideal);
    });
    for (const int count : qAsConst(counts)) {
        const QVector<QRect> rects = tilesInColumns(area, least, count);
        if (!rects.isEmpty())
            return rects;
    }
    return {};
}
