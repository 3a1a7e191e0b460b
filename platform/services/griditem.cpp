// SPDX-License-Identifier: MIT
#include "platform/contract/griditem.h"

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

int compare(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
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
