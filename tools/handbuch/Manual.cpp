#include "tools/handbuch/Manual.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "core/Version.h"
#include "tools/handbuch/Book.h"
#include "tools/handbuch/Cover.h"
#include "tools/handbuch/Navigation.h"
#include "tools/handbuch/Typesetter.h"

namespace koben::handbuch {
namespace {

/// Page numbers are part of the text, and so may move what they tell: set until they hold.
Typesetter setWithPages(const Book& book) {
    PageNumbers pages;
    Typesetter typesetter(book.blocks(pages));
    for (int again = 0; again < 5 && typesetter.pageNumbers() != pages; ++again) {
        pages = typesetter.pageNumbers();
        typesetter = Typesetter(book.blocks(pages));
    }
    return typesetter;
}

QImage drawn(const QString& sign) {
    QImageReader reader(sign);
    reader.setScaledSize({1024, 1024});
    return reader.read();
}

std::vector<Bookmark> bookmarks(const std::vector<Block>& blocks) {
    std::vector<Bookmark> all;
    for (const Block& block : blocks)
        if (block.style == Style::Part || block.style == Style::Front || block.style == Style::Chapter)
            all.push_back({block.mark.isEmpty() ? block.text : block.mark + u' ' + block.text, block.anchor,
                           block.style == Style::Chapter});
    return all;
}

}  // namespace

QString Manual::write(const QString& path) {
    QFile text(help);
    if (!text.open(QIODevice::ReadOnly)) return QStringLiteral("Die Hilfe %1 lässt sich nicht lesen.").arg(help);
    const Hilfedatei chapters(forPrint(QString::fromUtf8(text.readAll())));
    if (chapters.chapters().empty()) return QStringLiteral("In %1 steht kein Kapitel.").arg(help);
    const Pictures windows(pictures);
    const Book book(chapters, windows);
    withoutPicture = book.withoutPicture();
    const Typesetter typesetter = setWithPages(book);

    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter paper(&buffer);
        paper.setResolution(Dots);
        paper.setPageLayout({QPageSize(QPageSize::A4), QPageLayout::Portrait, {}});
        paper.setTitle(QStringLiteral("KOBEN 2.0 - Handbuch"));
        paper.setCreator(QStringLiteral("KOBEN ") + Version);
        QPainter painter(&paper);
        painter.setRenderHint(QPainter::LosslessImageRendering);
        paintCover(painter, drawn(sign), windows.of(QStringLiteral("PA_Koben")), Version);
        typesetter.paint(painter, paper);
    }
    if (!addNavigation(pdf, bookmarks(book.blocks({})), typesetter.targets()))
        return QStringLiteral("Ein Verweis des Handbuchs führt ins Leere.");
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size() && file.commit();
    return written ? QString() : QStringLiteral("%1 lässt sich nicht schreiben: %2").arg(path, file.errorString());
}

}  // namespace koben::handbuch
