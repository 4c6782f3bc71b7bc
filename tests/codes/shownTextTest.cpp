#include "codes/content/shownText.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace folvane {

TEST(ShownText, LetsNothingHideOrTurn)
{
    using Row = std::pair<std::u16string, std::u16string>;
    for (const auto& [characters, want] :
         {Row{u"", u""}, Row{u"Überraschung, 日本 🎉", u"Überraschung, 日本 🎉"},
          Row{u"exe\u202Egnp", u"exe⟨U+202E⟩gnp"}, Row{u"\u2066\u2069\u200F", u"⟨U+2066⟩⟨U+2069⟩⟨U+200F⟩"},
          Row{u"a\u0007\tb\u007F\u0085", u"a⟨U+0007⟩⟨U+0009⟩b⟨U+007F⟩⟨U+0085⟩"},
          Row{u"a\r\nb\nc\rd\u2028e", u"a b c⟨U+000D⟩d⟨U+2028⟩e"},
          Row{u"pay\u200Bpal\uFEFF\u00AD", u"pay⟨U+200B⟩pal⟨U+FEFF⟩⟨U+00AD⟩"},
          Row{u"\u3164\u115F\u034F", u"⟨U+3164⟩⟨U+115F⟩⟨U+034F⟩"},
          Row{{0xD83C, u'x', 0xDF89}, u"⟨U+D83C⟩x⟨U+DF89⟩"}, Row{u"\U000E0041\uE000", u"⟨U+E0041⟩⟨U+E000⟩"},
          Row{u"👩\u200D👧 ❤\uFE0F", u"👩\u200D👧 ❤\uFE0F"}, Row{u"a\u200Db\uFE0F", u"a⟨U+200D⟩b⟨U+FE0F⟩"},
          Row{u"می\u200Cخواهم क्\u200Dष", u"می\u200Cخواهم क्\u200Dष"},
          Row{u"\u200C\uFE0F", u"⟨U+200C⟩⟨U+FE0F⟩"},
          Row{u"❤\uFE0F\uFE0F\u200D\u200D1\uFE0F", u"❤\uFE0F⟨U+FE0F⟩⟨U+200D⟩⟨U+200D⟩1\uFE0F"},
          Row{u"\uFFFC\u2800", u"⟨U+FFFC⟩⟨U+2800⟩"}}) {
        const QString text = QString::fromStdU16String(characters);
        EXPECT_EQ(shownLine(text), QString::fromStdU16String(want));
        QString original;
        for (const ShownPiece& piece : shownText(text))
            original += piece.original;
        EXPECT_EQ(original, text);
    }
}

} // namespace folvane
