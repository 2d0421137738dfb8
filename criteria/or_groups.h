// Where each criterion of a list stands in its conjunction of or-groups. A group is a criterion
// joined by And and the unbroken run of those joined by Or after it.
#pragma once

#include "criteria/criteria_node.h"

// What a criterion is to its group. Those joined by Or at the head of a list have no opener: they
// are Inside or Last while no group is open.
enum class eTerm { Alone, First, Inside, Last };

class SRxOrGroups {
public:
    // The next criterion of the list; each is given once, in order.
    eTerm Next(const SRxCriteriaNode& c) {
        const SRxCriteriaNode* const n = c.nextCriterion;
        const bool orFollows = n != nullptr && n->joinType == JOIN_OR;
        if (!open_ && c.joinType != JOIN_OR && !orFollows) return eTerm::Alone;
        if (c.joinType == JOIN_AND) {
            open_ = true;
            return eTerm::First;
        }
        if (orFollows) return eTerm::Inside;
        open_ = false;
        return eTerm::Last;
    }
    // A group is open after the last criterion given.
    bool IsOpen() const { return open_; }

private:
    bool open_ = false;
};

// The join rule, fed with one result after the other: every term has to hold, a group holds when
// one of its criteria does.
class SRxJoinRule {
public:
    void Take(bool result, const SRxCriteriaNode& c) {
        switch (groups_.Next(c)) {
            case eTerm::Alone:
                break;
            case eTerm::First:
                groupResult_ = result;
                break;
            case eTerm::Inside:
                groupResult_ = groupResult_ || result;
                break;
            case eTerm::Last:
                result = groupResult_ || result;
                break;
        }
        if (groups_.IsOpen()) return;
        total_ = firstTerm_ ? result : total_ && result;
        firstTerm_ = false;
    }
    // True for an empty list.
    bool Total() const { return total_; }

private:
    SRxOrGroups groups_;
    bool groupResult_ = false;
    bool total_ = true;
    bool firstTerm_ = true;
};
