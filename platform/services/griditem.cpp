// SPDX-License-Identifier: MIT
#include "platform/contract/griditem.h"

#include <algorithm>

namespace mirn::itemviewgui {

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// A maximal run of ASCII digits that starts at `begin`.
struct Number
{
    Number(const QString& text, int begin)
        : first(begin)
        , end(begin)
    {
        while (end < text.size() && isDigit(text[end]))
            ++end;
        while (first < end - 1 && text[first] == QLatin1Char('0'))
            ++first;
        leadingZeros = first - begin;
    }

    int first; // the first digit that counts
    int end;
    int leadingZeros;
};

int compareNumbers(const QString& left, const Number& l, const QString& right, const Number& r)
{
    if (l.end - l.first != r.end - r.first)
        return l.end - l.first < r.end - r.first ? -1 : 1;
    for (int i = 0; i < l.end - l.first; ++i) {
        if (left[l.first + i] != right[r.first + i])
            return left[l.first + i] < right[r.first + i] ? -1 : 1;
    }
    return 0;
}

// Returns where the first difference lies, or the beginning of the number that it lies in.
int firstDifference(const QString& a, const QString& b)
{
    const auto shorter = std::min(a.size(), b.size());
    int place = static_cast<int>(std::mismatch(a.begin(), a.begin() + shorter, b.begin()).first - a.begin());
    while (place > 0 && isDigit(a[place - 1]))
        --place;
    return place;
}

int compare(const QString& a, const QString& b)
{
    int i = firstDifference(a, b);
    int j = i;
    int tie = 0; // the first difference in leading zeros decides between texts that are equal otherwise
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const Number l(a, i);
            const Number r(b, j);
            if (const int order = compareNumbers(a, l, b, r))
                return order;
            if (tie == 0)
                tie = l.leadingZeros - r.leadingZeros;
            i = l.end;
            j = r.end;
        } else if (a[i] != b[j]) {
            return a[i] < b[j] ? -1 : 1;
        } else {
            ++i;
            ++j;
        }
    }
    if (i < a.size() || j < b.size())
        return i < a.size() ? 1 : -1;
    return tie;
}

} // namespace

int GridItem::compareString(const QString& left, const QString& right, Qt::CaseSensitivity caseSensitivity)
{
    if (caseSensitivity == Qt::CaseSensitive)
        return compare(left, right);
    // Folding both texts first (and not character by character) keeps the order transitive.
    return compare(left.toCaseFolded(), right.toCaseFolded());
}

} // namespace mirn::itemviewgui
