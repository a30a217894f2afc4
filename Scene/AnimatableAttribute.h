// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <Scene/AdjustableAttribute.h>
#include <Scene/KeyValuePosition.h>

/// One SMIL animation of one attribute of one element.
///
/// Knows when the animation is in effect, how a time maps onto its key values, and how to write
/// the value for a time into the element. The value kinds derive from it: they parse the key
/// values and yield the text for a time. All times are milliseconds of document time.
///
/// Objects are created with new of a value kind and held by a boost::shared_ptr that was made from
/// the value kind; the class has no virtual destructor. After setParams() they never change and
/// can be asked for any time, in any order.
///
/// Repetition beyond the first simple duration shows only through a frozen end: an animation is
/// running for one simple duration, whatever its repeat count is.
///
/// \ingroup documents
class TITLESCENE_EXPORT AnimatableAttribute : public AdjustableAttribute
{
public:
    /// How a time between two key values is used.
    enum CalcModes {
        Discrete = 0, ///< jump to the next key value, half-way between the two key times
        Linear = 1    ///< interpolate between the two
    };

    /// An animation of the attribute \a attributeName of \a element, an element below \a root.
    /// Without key values and with no duration; the value kind sets the former, setParams() the
    /// timing.
    AnimatableAttribute(const QDomNode &element, const QDomNode &root, QString attributeName);

    /// The same for an element whose place is known already.
    AnimatableAttribute(const QDomNode &element, const SvgElement &place, QString attributeName);

    /// The attribute's text at \a time.
    virtual QString valueForTime(int time) const = 0;

    /// Sets the timing, unchecked. \a begin and \a end are ms; \a end is one simple duration after
    /// \a begin. A negative \a repeatCount means indefinite. \a freeze holds the value of the end
    /// after the end.
    void setParams(int begin, int end, int repeatCount, bool freeze, CalcModes calcMode);

    /// True while the animation runs: begin <= \a time < end.
    bool isApplicable(int time) const;

    /// True when the animation has ended at \a time and holds its last value.
    bool isApplicableFrozen(int time) const;

    /// The begin, ms.
    int beginTime() const;

    /// The end of the first simple duration, ms.
    int endTime() const;

    /// How often the animation runs; negative for indefinitely.
    int repeatCount() const;

    /// True when the value of the end holds after the end.
    bool isFrozen() const;

    /// How times between two key values are used.
    CalcModes calcMode() const;

    /// The number of key values; 0 when their numbers don't match, so that they give no text.
    int valueCount() const;

    /// The key values on both sides of \a time and the weight (0 to 1) of the second. Both indices
    /// are always those of key values (0 when there are none), also for times at which the
    /// animation does not apply; an animation without a positive duration is at its last key
    /// value.
    void calculateValues(int time, int &index, int &nextIndex, double &fraction) const;

    /// Writes the value for \a time into the element below \a root.
    void apply(const QDomNode &root, int time) const;

protected:
    ~AnimatableAttribute() = default;

    /// To be called by the constructor of a value kind that has parsed its key values.
    void setValueCount(int count);

    /// How far \a time is in its cycle, 0 to 1.
    double progress(int time) const;

    /// What calculateValues() yields.
    KeyValuePosition keyValuesAt(int time) const;

private:
    bool m_freeze = true;
    int m_repeatCount = 1;
    int m_begin = 0;
    int m_end = 0;
    CalcModes m_calcMode = Linear;
    int m_valueCount = 0;
};
