#include "Measure.h"
#include "Parts.h"
#include "Posts.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QTextCursor>
#include <QTextDocument>

#include <vector>

namespace {

constexpr int kFontSize = 12;
constexpr int kWidth = 520; // pixels, as wide as the text in the program's window
constexpr int kRounds = 7;

struct Piece {
    QString text;
    QTextCharFormat format;
};

std::vector<Piece> MakePieces(int count) {
    std::vector<Piece> pieces;
    for (int i = 1; i <= count; i++) {
        for (const ColoredText& colored : ColoredPost(MakePost(i), i)) {
            pieces.push_back({QString::fromStdString(colored.text), {}});
            pieces.back().format.setForeground(QColor(colored.color));
        }
    }
    return pieces;
}

// The posts are put in as fast as a document takes them: at one go and with nothing to undo.
double LayOut(const std::vector<Piece>& pieces) {
    const double start = ThreadTime();
    QTextDocument document;
    QFont font = QApplication::font();
    font.setPixelSize(kFontSize);
    document.setUndoRedoEnabled(false);
    document.setDefaultFont(font);
    document.setTextWidth(kWidth);
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const Piece& piece : pieces)
        cursor.insertText(piece.text, piece.format);
    cursor.endEditBlock();
    document.documentLayout()->documentSize();
    return ThreadTime() - start;
}

} // namespace

int RunDocument(const Arguments& arguments) {
    int argc = 1;
    char name[] = "document";
    char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    const std::vector<Piece> pieces = MakePieces(std::stoi(arguments[0]));
    PrintResult("cold", LayOut(pieces));
    PrintResult("warm", BestOf(kRounds, "document", [&] { return LayOut(pieces); }));
    return 0;
}
