#pragma once

#include <random>
#include <string>
#include <vector>

namespace intake {

/// Makes documents, and plain paths into them, by chance; the same for the same seed. Names are
/// few, so that paths often find something.
class RandomXml {
public:
    static constexpr const char* NAMESPACES = "xmlns:p='urn:p' xmlns:q='urn:q' xmlns:d='urn:d'";

    explicit RandomXml(unsigned seed) : engine_(seed) {}

    size_t upTo(size_t count) { return engine_() % count; }

    std::string pick(const std::vector<std::string>& all) { return all[upTo(all.size())]; }

    std::string document() {
        return pick({"", "", "<?xml version=\"1.0\"?>",
                     "<?xml version='1.0' encoding='UTF-8'?>\r\n", "\xEF\xBB\xBF",
                     "<!-- first --><?go now?>\n"}) +
               "<a" + pick({"", " xmlns:p='urn:p'", " xmlns='urn:d' xmlns:p=\"urn:p\""}) +
               " xmlns:q='urn:q'" + attributes() + ">" + content(4) + "</a>" +
               pick({"", "\n", "<!--last-->\n", " <?end?>"});
    }

    /// As it is, or with something wrong or strange in it.
    std::string perhapsSpoilt(std::string document) {
        if (upTo(4) != 0) {
            return document;
        }
        const size_t at = upTo(document.size());
        if (upTo(2) == 0) {
            return document.erase(at, 1 + upTo(3));
        }
        return document.insert(at, pick({"<",
                                         ">",
                                         "&",
                                         "]]>",
                                         "\"",
                                         "'",
                                         "<b>",
                                         "</a>",
                                         std::string(1, '\0'),
                                         "\x01",
                                         "\xFF",
                                         "<!--",
                                         "-->",
                                         "<![CDATA[",
                                         "<?",
                                         "xml:space='preserve'",
                                         "&#0;",
                                         "&#x41;",
                                         "&gt;",
                                         "\r",
                                         "=",
                                         ":",
                                         "\xC3\xB6",
                                         "<!DOCTYPE a>"}));
    }

    std::string path() {
        std::string text = pick({"/", "/", "//", ""}) + step();
        for (size_t count = upTo(4); count > 0; --count) {
            text += pick({"/", "/", "//", " / "}) + step();
        }
        return text + (upTo(5) == 0
                           ? pick({"/", "//"}) + pick({"@x", "@*", "text()", "@p:x", "@ y", "@q:*"})
                           : lastPredicate());
    }

    std::string key() {
        return pick({".",        "a",     "b",    "*",        "@x",         "@*",   "b/c",
                     "p:a",      ".//c",  "c//a", "a[2]",     "b[@x]",      "c/@y", "text()",
                     "b/text()", ".//@x", "*[a]", "b[c='1']", ".//b[c][2]", "*[2]", "d:b"});
    }

private:
    std::string step() {
        return pick({"a", "b", "c", "*", "p:a", "p:*", "q:b", "d:b", "d:*", "d:a", "a"}) +
               (upTo(4) == 0 ? earlyPredicate() : "");
    }

    std::string earlyPredicate() {
        return pick({"[1]", "[2]", "[position()=1]", "[position() < 3]", "[position()>=2]", "[@x]",
                     "[@x='1']", "[ @x != '1' ]", "[@p:x=\"2\"]", "[@y>1]", "[@*=2]", "[@x][1]",
                     "[2][@x]", "[1][1]", "[0]", "[position()!=2]", "[@x<=2]"});
    }

    std::string lastPredicate() {
        switch (upTo(4)) {
            case 0:
                return pick({"[b]", "[c='1']", "[a='t']", "[b != '1']", "[c][2]", "[*]", "[p:a=2]",
                             "[c>1][1]", "[@x][b]", "[b][@x]", "[a='t u']", "[d:b]", "[c='']"});
            case 1:
                return earlyPredicate();
            default:
                return "";
        }
    }

    std::string attributes() {
        return pick({"", "", " x='1'", " x=\"2\" y='3'", " y='1'\n x='&lt;\"\t&#10;'", " p:x='2'",
                     " xml:space='preserve'", " xml:space='default' x='1'",
                     " x='1' p:x='1' q:b='\xC3\xA9'", " xmlns:p='urn:other' p:x='2'",
                     " xmlns='urn:d'", " xmlns=''", " xml:lang = 'en'", " x=' a\r\nb '"});
    }

    std::string text() {
        return pick({"",
                     "",
                     "",
                     "1",
                     "t",
                     " ",
                     "\n  ",
                     " t u ",
                     "\r\n\r\n",
                     "x\ry",
                     "&#32;",
                     "&#x20;&amp;",
                     "2",
                     "<![CDATA[ v ]]>",
                     "<![CDATA[]]>",
                     "<![CDATA[<\r\n>]]>",
                     "<!--c-->",
                     "<!--\r\n-->",
                     "<?p i ?>",
                     "<?p?>",
                     "<?p ?>",
                     "\xC3\xB6\xE2\x82\xAC",
                     "a]]b>",
                     "&gt;&quot;",
                     "t<!--c--> ",
                     "\t&#13;"});
    }

    std::string content(int depth) {
        std::string all;
        for (size_t count = depth > 0 ? upTo(5) : 0; count > 0; --count) {
            const std::string name = pick({"a", "b", "c", "p:a", "q:b", "b"});
            const std::string inside = content(depth - 1) + text();
            all += text() + "<" + name + attributes();
            all += inside.empty() && upTo(2) == 0
                       ? pick({"/>", " />"})
                       : ">" + inside + "</" + name + pick({">", ">", " >"});
            all += text();
        }
        return all;
    }

    std::mt19937 engine_;
};

}  // namespace intake
