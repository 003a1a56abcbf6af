#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

class Read_LUTFile;

/// A picture of what a table does, drawn for the size and the palette at hand, or a text in its
/// place.
class TableView : public QWidget {
    Q_OBJECT

public:
    explicit TableView(QWidget* parent = nullptr);

    /// Draws a table, which must be in R, G, B order and stay until something else is shown.
    void showTable(const Read_LUTFile& lut);
    void showText(const QString& text);

    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// The picture of the table in the present size. Drawn when it is first needed.
    const QImage& picture();

    const Read_LUTFile* m_table = nullptr;
    QString m_text;
    QImage m_picture;
};
