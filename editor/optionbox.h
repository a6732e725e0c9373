// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_OPTIONBOX_H
#define MIOLKA_EDITOR_OPTIONBOX_H

#include <QComboBox>

#include <memory>

class QStyleOption;
class QStylePainter;
class cMyShortLabels;

/// A combo box that can look like a cell of a table: no frame until it is used, no arrow where the
/// label wants the room, and a label that is shortened with care where the column is narrow.
class cMyOptionBox : public QComboBox
{
    Q_OBJECT

public:
    explicit cMyOptionBox(QWidget* parent = nullptr);

    /// Makes it a cell of a column with these labels. It asks for room for the longest one, and
    /// takes no less than leastWidth pixels for a text.
    void setCell(std::shared_ptr<cMyShortLabels> labels, int leastWidth);

    /// Shows its text in a fainter colour, which still is readable.
    void setQuiet(bool quiet);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// The list is as wide as its longest choice.
    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void paintCell();
    void paintArrow(QStylePainter& painter, const QRect& within, const QStyleOption& option);
    [[nodiscard]] QRect cellTextRect() const;
    [[nodiscard]] QString toolTipText() const;

    std::shared_ptr<cMyShortLabels> m_labels; ///< of a cell
    int m_leastWidth = 0;
    bool m_isQuiet = false;
};

#endif
