#include "engine/BookFixture.h"

#include "support/madePdf.h"

namespace folvane {

QByteArray book(const QByteArray& tag)
{
    const QByteArray resources = "/Resources 9 0 R ";
    const QList<MadePage> pages{
        {shownText("Page 1 " + tag) + " /OC /Hidden BDC 1 0 0 rg 100 100 50 50 re f EMC",
         resources + "/Annots [10 0 R 11 0 R 18 0 R] /StructParents 0"},
        {shownText("Page 2 " + tag + " secret2"),
         resources
             + "/Annots [20 0 R] /PieceInfo << /Maker << /Private (producer data) >> >> "
               "/AA << /O << /S /JavaScript /JS (x) >> >>"},
        {shownText("Page 3 " + tag + " secret3") + " q 10 0 0 10 300 300 cm /Only3 Do Q",
         resources + "/Annots [19 0 R 21 0 R]"}};
    return pdfOfPages(
        pages,
        "/Outlines 12 0 R /AcroForm 16 0 R /OCProperties 22 0 R /StructTreeRoot 27 0 R "
        "/MarkInfo << /Marked true >> /PageLabels << /Nums [0 << /S /r >> 2 << /S /D >>] >> "
        "/Names << /Dests << /Names [(end) [5 0 R /Fit]] >> /EmbeddedFiles << /Names [(note.txt) 24 0 R] >> "
        "/JavaScript << /Names [(run) << /S /JavaScript /JS (app.alert\\(1\\)) >>] >> >> "
        "/OpenAction << /S /JavaScript /JS (app.alert\\(2\\)) >> "
        "/OutputIntents [<< /Type /OutputIntent /S /GTS_PDFX /OutputConditionIdentifier (CGATS) >>]",
        {
            "<< /Font << /F1 29 0 R >> /XObject << /Only3 26 0 R >> /Properties << /Hidden 23 0 R >> >>", // 9
            "<< /Type /Annot /Subtype /Link /Rect [10 10 50 50] /P 3 0 R /Dest [4 0 R /XYZ 0 700 0] >>",
            "<< /Type /Annot /Subtype /Link /Rect [60 10 90 50] /P 3 0 R /A << /S /GoTo /D (end) >> >>",
            "<< /Type /Outlines /First 13 0 R /Last 15 0 R /Count 3 >>", // 12
            "<< /Title (One) /Parent 12 0 R /Next 15 0 R /First 14 0 R /Last 14 0 R /Count 1 /Dest [3 0 R "
            "/Fit] "
            ">>",
            "<< /Title (Two) /Parent 13 0 R /Dest [4 0 R /Fit] >>",
            "<< /Title (Three) /Parent 12 0 R /Prev 13 0 R /A << /S /GoTo /D [5 0 R /Fit] >> >>",
            "<< /Fields [17 0 R 20 0 R] /DA (/F1 12 Tf) /DR << /Font << /F1 29 0 R >> >> /SigFlags 3 >>", // 16
            "<< /FT /Tx /T (name) /V (" + tag + ") /Kids [18 0 R 19 0 R] >>",
            "<< /Type /Annot /Subtype /Widget /Parent 17 0 R /P 3 0 R /Rect [100 600 200 620] >>",
            "<< /Type /Annot /Subtype /Widget /Parent 17 0 R /P 5 0 R /Rect [100 600 200 620] >>",
            "<< /Type /Annot /Subtype /Widget /FT /Sig /T (signature) /P 4 0 R /Rect [100 500 200 550] "
            "/AP << /N 25 0 R >> /V << /Type /Sig /Filter /X /ByteRange [0 1 2 3] /Contents <00> >> >>",
            "<< /Type /Annot /Subtype /Link /Rect [10 10 50 50] /P 5 0 R /Dest [3 0 R /Fit] >>", // 21
            "<< /OCGs [23 0 R] /D << /BaseState /ON /OFF [23 0 R] /Order [23 0 R] >> >>",
            "<< /Type /OCG /Name (Hidden) >>",
            "<< /Type /Filespec /F (note.txt) /UF (note.txt) /EF << /F 28 0 R >> >>", // 24
            pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 100 50]", "0 0 1 rg 0 0 100 50 re f"),
            pdfStream("/Type /XObject /Subtype /Form /BBox [0 0 1 1]", "0 1 0 rg 0 0 1 1 re f % only-on-3"),
            "<< /Type /StructTreeRoot /K << /Type /StructElem /S /Document /P 27 0 R >> >>", // 27
            pdfStream("/Type /EmbeddedFile", "attached words"),
            "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
            "<< /Title (The " + tag + ") /Author (Somebody) /Creator (A maker) >>", // 30
        },
        "/Info 30 0 R");
}

} // namespace folvane
