// SPDX-License-Identifier: LGPL-2.1-or-later
#include "rows/RowPatch.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace SorrelQml {

namespace {

/// The places in the new list of the rows that stay, in the order of the old list; with steps for the rows that go.
std::vector<int> removeRows(const ShelfRows &from, const QHash<qint64, int> &places, QVector<RowStep> &steps)
{
    std::vector<int> kept;
    std::vector<int> gone;
    for (int i = 0; i < from.size(); ++i) {
        const int place = places.value(from.at(i).id(), -1);
        if (place >= 0)
            kept.push_back(place);
        else
            gone.push_back(i);
    }
    // From the end, so that the rows before keep their numbers.
    for (auto row = gone.crbegin(); row != gone.crend(); ++row) {
        if (!steps.isEmpty() && steps.constLast().first == *row + 1)
            steps.last().first = *row;
        else
            steps.append({RowStep::Kind::Remove, *row, *row, {}});
    }
    return kept;
}

/// Which of @p places belong to a longest ascending subsequence.
std::vector<bool> ascending(const std::vector<int> &places)
{
    std::vector<std::size_t> ends; // the last member of the best subsequence of each length
    std::vector<std::size_t> before(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto length = std::lower_bound(ends.begin(), ends.end(), places[i],
                                             [&](std::size_t end, int place) { return places[end] < place; });
        before[i] = length == ends.begin() ? i : *std::prev(length);
        if (length == ends.end())
            ends.push_back(i);
        else
            *length = i;
    }
    std::vector<bool> isAscending(places.size());
    if (ends.empty())
        return isAscending;
    std::size_t member = ends.back();
    for (std::size_t i = 0; i < ends.size(); ++i) {
        isAscending[member] = true;
        member = before[member];
    }
    return isAscending;
}

void moveRows(std::vector<int> &places, QVector<RowStep> &steps)
{
    const std::vector<bool> isAscending = ascending(places);
    std::vector<int> movers;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!isAscending[i])
            movers.push_back(places[i]);
    }
    std::sort(movers.begin(), movers.end());
    // Rows behind a mover that have not been moved yet are in a wrong place, so only settled ones are compared.
    std::size_t left = movers.size();
    for (const int mover : movers) {
        const auto isSettled = [&](int place) {
            return !std::binary_search(movers.cend() - std::ptrdiff_t(left), movers.cend(), place);
        };
        const auto from = std::find(places.begin(), places.end(), mover);
        const int first = int(from - places.begin());
        places.erase(from);
        const auto to =
            std::find_if(places.begin(), places.end(), [&](int place) { return place > mover && isSettled(place); });
        const int last = int(to - places.begin());
        places.insert(to, mover);
        if (first != last)
            steps.append({RowStep::Kind::Move, first, last, {}});
        --left;
    }
}

/// Joins @p row to the last step, when that is of the same kind and ends before it.
void addRow(QVector<RowStep> &steps, RowStep::Kind kind, int place, const ShelfRow &row)
{
    if (!steps.isEmpty() && steps.constLast().kind == kind && steps.constLast().last == place - 1) {
        steps.last().last = place;
        steps.last().rows.append(row);
    } else {
        steps.append({kind, place, place, {row}});
    }
}

} // namespace

RowPatch RowPatch::between(const ShelfRows &from, const ShelfRows &to)
{
    QHash<qint64, int> places;
    for (int i = 0; i < to.size(); ++i)
        places.insert(to.at(i).id(), i);
    QHash<qint64, int> old;
    for (int i = 0; i < from.size(); ++i)
        old.insert(from.at(i).id(), i);

    RowPatch patch;
    std::vector<int> kept = removeRows(from, places, patch.steps);
    moveRows(kept, patch.steps);
    for (int i = 0; i < to.size(); ++i) {
        if (!old.contains(to.at(i).id()))
            addRow(patch.steps, RowStep::Kind::Insert, i, to.at(i));
    }
    for (int i = 0; i < to.size(); ++i) {
        const int before = old.value(to.at(i).id(), -1);
        if (before >= 0 && !from.at(before).looksLike(to.at(i)))
            addRow(patch.steps, RowStep::Kind::Change, i, to.at(i));
    }
    return patch;
}

} // namespace SorrelQml
