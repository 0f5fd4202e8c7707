#!/usr/bin/env python3
"""Writes the expression lists of the differential corpus (tree.expr, config.expr).

The expected results beside them come from the oracle (see README.md here);
run this, then the oracle, only when the corpus is extended."""

AXES = ["ancestor", "ancestor-or-self", "attribute", "child", "descendant",
        "descendant-or-self", "following", "following-sibling", "namespace", "parent",
        "preceding", "preceding-sibling", "self"]
TESTS = ["*", "node()", "text()", "comment()", "c", "processing-instruction()"]
TREE_CONTEXTS = ["/", "/root", "//*[@id='a1']", "//*[@id='b1']", "//*[@id='c2']",
                 "//*[@id='d1']", "//*[@id='b2']", "//*[@id='c5']", "//*[@id='e1']",
                 "//a[1]/@x", "//b[@id='b1']/text()[2]", "//comment()", "//*[@id='c1']"]


def describe(x):
    # Name, id and text of a node: reveals which node a step picked.
    return f"concat(name({x}),'|',{x}/@id,'|',string({x}))"


def tree():
    out = ["[axes]"]
    for ctx in TREE_CONTEXTS:
        for axis in AXES:
            for test in TESTS:
                path = f"{ctx.rstrip('/') if ctx != '/' else ''}/{axis}::{test}"
                out.append(f"count({path})")
                if test in ("*", "node()"):
                    for k in ("1", "2", "last()", "last()-1"):
                        out.append(describe(f"{path}[{k}]"))
                    out.append(describe(f"({path})[1]"))
                    out.append(describe(f"({path})[last()]"))
    out.append("[abbreviations]")
    for e in ["count(//c)", "count(//c/..)", "count(//@id)", "count(//b//c)", "string(//b//c[2]/@id)",
              "count(.//c)", "count(./a)", "string(a/b/../@id)", "count(//*/@*)", "string(//c[1]/@id)",
              "count(//c[1])", "string((//c)[1]/@id)", "string((//c)[last()]/@id)", "count(a//.)",
              "count(//text())", "string(//text()[3])", "count(//node())", "count(/descendant::node())",
              "string(//e)", "string(//e/text())", "count(//e/text())", "string(//f)", "count(//f/text())",
              "string(//f/text())", "count(//b/c[2])", "count(//b/c[last()])", "string(//b[c][2]/@id)",
              "count(//*[c][b])", "count(//a[b/c])", "string(//a[b/c[@id='c5']]/@id)", "count(@*)",
              "count(//a/@*)", "string(//*[@y]/@id)", "count(//*[@x=1])", "count(//*[@x>1])",
              "string(//b[@x]/@x)", "count(/*)", "count(/)", "name(/*)", "name(/)", "string(.)",
              "count(a[1]/b[1]/node())", "count(a[1]/b[1]/text())", "string(a[1]/b[1]/text()[1])",
              "count(//c[d])", "count(//c[not(node())])", "count(//c[.=''])", "count(//*[text()])",
              "count((//a|//b)[1])", "count(//a|//b|//c)", "string((//c|//a)[1]/@id)",
              "string((//c|//a)[2]/@id)", "count(//c|//c)", "count(//b/c|//c/d|//d)",
              "count(//c[position()>1])", "count(//c[position()=last()])", "string(//c[position()=2]/@id)",
              "count(//b/c[position() mod 2 = 1])", "string(//b[2]/preceding::c[1]/@id)",
              "string(//c[@id='c4']/preceding::*[1]/@id)", "string(//c[@id='c4']/preceding::*[last()]/@id)",
              "count(//c[@id='c4']/preceding::*)", "count(//c[@id='c4']/following::*)",
              "string(//d/ancestor::*[2]/@id)", "string(//d/ancestor::*[last()]/@id)",
              "string((//d/ancestor::*)[2]/@id)", "count(//d/ancestor::*[position()<3])",
              "count(//b[@id='b1']/node())", "string(//b[@id='b1']/node()[3])",
              "count(//@x/following::c)", "count(//@x/preceding::*)", "count(//@x/ancestor::*)",
              "count(//@x/following-sibling::node())", "count(//@x/parent::a)", "count(//@x/..)",
              "string(//@x/../@id)", "count(//@x/self::node())", "count(//@x/child::node())",
              "count(//@x/descendant::node())", "count(//@x/descendant-or-self::node())",
              "count(//@x/attribute::node())", "count(//comment()/following::c)", "count(id('a1'))",
              "count(//c[1][@id='c1'])", "count(//c[@id='c1'][1])", "count(//c[@id='c2'][2])",
              "count(//b[c[2]])", "count(//b[c][c])", "count(//b/c[1]/following-sibling::c[1])",
              "string(//b/c[1]/following-sibling::c[1]/@id)", "count(//*[self::b or self::c])",
              "count(//c/self::c)", "count(//c/self::b)", "count(/root/a/b/c/d)", "count(/root/*/*/*/*)",
              "count(//*[count(*)=3])", "count(//*[count(@*)=2])", "count(//*[@*])",
              "string(//*[@x][last()]/@id)", "string(/child::root/child::a[2]/attribute::id)",
              "string(//f)", "string-length(//e)", "string(//b[@id='b1'])", "string(//a)",
              "string(/)", "count(//c[string()])", "count(//c[number()=number()])", "sum(//c)",
              "sum(//@x)", "sum(//@y|//@x)", "count(//a/b[1]/c)", "count(//a/b/c[1])",
              "string(//a[2]/b/c[2])", "count(//a[last()]/*)", "count(.//.)", "count(..)",
              "name(..)", "count(../..)", "count(*/..)", "count(//text()/..)", "count(//comment()/..)"]:
        out.append(e)
    return out


def config():
    out = ["[paths]"]
    for e in ["string(section[@name='net']/item[@key='port'])", "string(//item[@key='host'])",
              "count(//item)", "count(//item[@type='int'])", "count(//item[@type!='int'])",
              "count(//item[not(@type='int')])", "string(//section[@id='s2']/item[last()]/@key)",
              "string(//item[@unit]/@key)", "count(//section[item/@type='string'])",
              "string(//user[role='ops']/name)", "string(//user[@age>30][2]/name)",
              "count(//user[@age>30])", "count(//user[@age>=27])", "count(//user[@age<27])",
              "string(//user[name='Bob']/@id)", "string(//user[starts-with(name,'Chl')]/@age)",
              "count(//role[.='user'])", "string(//role[.='user'][2]/../@id)",
              "string(//section[@enabled='true']/@name)", "count(//section[@enabled])",
              "string(//item[@key='root'])", "string(//data)", "string(//mixed)", "count(//mixed/text())",
              "string(//text)", "count(//text/text())", "string(//text/text()[2])", "string(//empty)",
              "count(//empty/node())", "string(//unicode)", "count(//comment())", "string(//comment()[2])",
              "string(/config/@version)", "string(@name)", "count(@*)", "string(//n[3])",
              "string(//item[.=8080]/@key)", "string(//item[. > 10]/@key)", "count(//n[. > 0])",
              "count(//n[. < 0])", "count(//n[. = 1])", "count(//n[number(.) != number(.)])",
              "count(//*[@type='int' and .>5])", "count(//*[@type='int' or @type='string'])",
              "string(//user[lang('en')][2]/name)", "count(//user[lang('en')])", "count(//user[lang('EN')])",
              "count(//user[lang('en-gb')])", "count(//user[lang('e')])", "count(//name[lang('de')])",
              "count(//*[lang('de')])", "count(//@id[lang('en')])", "count(//user/@id)",
              "string(//user[last()]/@id)", "string(//user[position()=2]/name)",
              "string(//item[@key='timeout']/following-sibling::item/@key)",
              "string(//item[@key='timeout']/preceding-sibling::item[1]/@key)",
              "count(//item[@key='timeout']/preceding-sibling::item)",
              "string(//section[item[@key='log']]/@id)", "string(//section[3]/n[last()])",
              "count(//section[3]/n[position() > 2 and position() < 6])", "count(//n[position() mod 2 = 0])"]:
        out.append(e)

    out.append("[strings]")
    strings = ["''", "'abc'", "'  a  b  c  '", "'Hello World'", "//name[1]", "//unicode", "//n",
               "//none", "12.5", "true()", "1 div 0", "'é𝄞x'"]
    for s in strings:
        out += [f"string-length({s})", f"normalize-space({s})", f"string({s})", f"concat({s},'|',{s})",
                f"starts-with({s},'a')", f"contains({s},'b')", f"substring-before({s},'b')",
                f"substring-after({s},'b')", f"translate({s},'abcl','ABC')", f"boolean({s})",
                f"number({s})", f"not({s})"]
    for start in ["0", "1", "1.5", "2", "-1", "-0.5", "0.5", "3", "10", "0 div 0", "1 div 0", "-1 div 0", "-42"]:
        out.append(f"substring('12345',{start})")
        for length in ["0", "1", "2.5", "3", "-1", "1 div 0", "0 div 0", "-1 div 0", "1.5"]:
            out.append(f"substring('12345',{start},{length})")
    out += ["substring('𝄞éabc',2,2)", "substring('日本語',2)", "string-length('日本語𝄞')",
            "translate('𝄞aé','𝄞é','xy')", "translate('abc','abc','')", "translate('aaa','aa','xy')",
            "translate('--a--','-','')", "substring-before('a/b/c','/')", "substring-after('a/b/c','/')",
            "substring-after('abc','')", "substring-before('abc','')", "substring-after('abc','x')",
            "contains('abc','')", "starts-with('abc','')", "starts-with('','')", "concat('a','b','c','d')",
            "concat(1,2)", "concat(true(),false())", "concat(//user/@id,'!')", "string-length()",
            "normalize-space()", "string()", "name()", "local-name()", "namespace-uri()",
            "name(//user)", "name(//user/@age)", "local-name(//@xml:lang)", "name(//@xml:lang)",
            "name(//comment())", "name(//text()[1])", "name(//none)", "local-name(/)",
            "namespace-uri(//user)", "string(//@xml:lang)", "count(//@xml:lang)"]

    out.append("[numbers]")
    numbers = ["0", "-0", "1", "-1", "0.5", "1.5", "2.5", "-0.5", "-1.5", "-2.5", "0.1+0.2", "1 div 3",
               "2 div 3", "100000", "1000000 * 1000000", "123456789012345678901234567890", "0.000001",
               "0.0000001 * 0.001", "1 div 0", "-1 div 0", "0 div 0", "-(0 div 0)", "3.14159",
               "4503599627370497", "9007199254740993", "1 div 7 * 1000000000000", "0.1 * 3",
               "12345.678", "-0.000123", "1 div 1024", "99999999999999999999", "5 mod 3", "-5 mod 3",
               "5 mod -3", "5.5 mod 2", "1 mod 0", "0 - 0", "-0 * 1", "0 * -1", "7 div 2", "10 div -4",
               "2 * 3 + 4", "2 + 3 * 4", "(2 + 3) * 4", "10 - 2 - 3", "100 div 10 div 5", "- - 3", "--3",
               "-3 - -3", "1e3", "number('1e3')", "number(' 12 ')", "number('-.5')", "number('.')",
               "number('+1')", "number('1.')", "number('- 1')", "number('0x10')", "number('Infinity')",
               "number('NaN')", "number(true())", "number(false())", "number('')", "number(//n[2])",
               "number(//item[@key='port'])", "sum(//n)", "sum(//n[. = number(.)])", "sum(//user/@age)",
               "sum(//none)", "floor(2.5)", "floor(-2.5)", "ceiling(2.5)", "ceiling(-2.5)", "ceiling(-0.5)",
               "floor(-0.5)", "round(0.5)", "round(-0.5)", "round(1.5)", "round(-1.5)", "round(2.4999)",
               "round(-0.2)", "round(0 div 0)", "round(1 div 0)", "floor('x')", "round(-2.5)",
               "1 div round(-0.4)", "1 div ceiling(-0.4)", "1 div -0", "count(//n) div 2",
               "last()", "position()", "string(1 = 1)", "0.30000000000000004", "1.0", "007",
               "1 div 3 * 3", "0.1 + 0.7", "1e-7", "123e2"]
    for n in numbers:
        out.append(n)
        out.append(f"string({n})")

    out.append("[comparisons]")
    operands = ["//n", "//user/@age", "//none", "1", "2.5", "'1'", "'abc'", "true()", "false()", "''",
                "//role", "'user'", "0 div 0", "//item[@key='port']"]
    for a in operands:
        for b in operands:
            for op in ["=", "!=", "<", ">=", ">"]:
                out.append(f"{a} {op} {b}")
    out.append("[booleans]")
    for e in ["true() and false()", "true() or false()", "not(0)", "not(0 div 0)", "boolean(-0)",
              "boolean(' ')", "boolean(//none)", "boolean(//n)", "1 and 'a'", "0 or ''",
              "1 < 2 < 3", "3 > 2 > 1", "1 = 1 = 1", "2 = 2 = 2", "true() = 1", "false() = ''",
              "'0' = false()", "//none = false()", "//none != true()", "//n = true()",
              "not(//none)", "1 = '1.0'", "'1' = '1.0'", "//n = '1'", "//n = '1.0'"]:
        out.append(e)
    out.append("[syntax]")
    for e in ["", "(", ")", "1 +", "//", "/ /", "a[", "a]", "@", "foo()", "count()", "count(1,2)",
              "substring('a')", "concat('a')", "$x", "'abc", "1 2", "child::", "bogus::a", "a::b",
              "..a", "@@a", "a | 1", "count(1)", "sum('a')", "1[1]", "(1)[1]", "//n[", "*[*",
              "div", "div div div", "mod", "and", "*", "* * *", "child::and", "and and and",
              "or or or", "count(//div)", "count(//and)", "@*[1]", "string(@*[1])",
              "processing-instruction('x')", "count(//processing-instruction())", "count(node()[1])",
              "text()", "comment()", "node()", "1 | //n", "'a' | 'b'", "-//n", "- //n[2]",
              "count(//n)[1]", "(//n)[2]", "(//n)[last()]", "((//n))[1]", "//n[1][1][1]",
              "string(//user[1]/name/text())", "namespace::*", "count(namespace::*)", "//@*[2]",
              "count(/config/section/item[@key='port']/@*)", "child::comment()", "self::node()",
              "self::config", "count(self::item)", "   1   +   2   ", "1+2", "1-2", "1 -2", "a-b",
              "count(//a-b)", "string(.5)", "string(5.)", ".5 + .5", "//item[1 + 1]/@key",
              "string(//item[@key = 'port']/@type)"]:
        out.append(e)

    out.append("[rounding]")
    # Halves go towards positive infinity; a result of zero from a negative
    # argument is negative zero (1 div it is -Infinity) yet prints as 0; the
    # rounding is exact, never floor(x + 0.5) in floating point.
    rounded = ["0.5", "-0.5", "0.4", "-0.4", "-0", "0", "0.49999999999999994", "-0.49999999999999994",
               "0.5000000000000001", "-0.5000000000000001", "1.4999999999999998", "-1.4999999999999998",
               "2.5", "-2.5", "3.5", "-3.5", "4503599627370495.5", "-4503599627370495.5",
               "4503599627370497", "-4503599627370497", "9007199254740991", "-9007199254740991",
               "9007199254740993", "1e300", "-0.0000001", "0.0000001", "1 div 0", "-1 div 0", "0 div 0",
               "-1.0000000000000002", "-0.9999999999999999", "0.9999999999999999", "//n[6]", "//n[8]",
               "'-0.3'", "''"]
    for x in rounded:
        for fn in ["round", "floor", "ceiling"]:
            out.append(f"{fn}({x})")
            out.append(f"1 div {fn}({x})")
    out += ["string(round(-0.4))", "concat(round(-0.4), '|', ceiling(-0.4))", "round(-0.4) = 0",
            "-round(0.4)", "1 div -round(0.4)", "1 div -ceiling(-0.5)", "1 div (0 * -1)", "1 div number('-0')",
            "1 div sum(//n[8])", "substring('12345', round(-0.4))", "substring('12345', -0.5, 2)",
            "substring('12345', 0.49999999999999994, 2)", "round(2.5) - round(-2.5)", "floor(-0.5) + ceiling(-0.5)"]

    out.append("[prefixes]")
    # No namespace prefix but xml is bound: a QName with another prefix is an
    # error wherever evaluation reaches it, in every place a QName can stand.
    for e in ["ns:a", "count(ns:a)", "/ns:a", "//ns:a", "count(//ns:a)", "child::ns:a", "self::ns:config",
              "descendant::ns:*", "ancestor-or-self::ns:config", "@ns:n", "count(@ns:n)", "attribute::ns:n",
              "@ns:*", "count(@ns:*)", "ns:*", "count(ns:*)", "count(//ns:*)", "section/ns:item",
              "count(section/ns:item)", "count(//item[ns:b])", "count(//item[@ns:b])", "count(*[foo:b])",
              "count(//item[ns:b or true()])", "count(//section[item/@ns:k = 'x'])", "count(ns:a | section)",
              "count(section | ns:a)", "count((section)/ns:a)", "count(//missing/ns:a)",
              "count(//section[1]/ns:a)", "string(ns:a)", "name(ns:a)", "local-name(@ns:a)",
              "boolean(ns:a)", "not(ns:a)", "ns:a = 1", "1 = ns:a", "ns:a[1]", "count(ns:a[1])",
              "foo:bar()", "foo:count(section)", "fn:count(section)", "count(foo:bar())",
              "string(foo:bar(1, 2))", "true() or foo:bar()", "false() and foo:bar()", "false() and ns:a",
              "true() or ns:a", "false() and $ns:v", "$ns:v", "count(//item[false() and ns:a])",
              "count(//item[position() < 0 and ns:a])", "count(//missing[ns:a])", "count(//item[9][ns:a])",
              "count(//item[1][ns:a])", "xmlns:a", "count(xml:a)", "count(//@xml:*)",
              "name(//@xml:*)", "count(//*[@xml:lang])", "count(//user/attribute::xml:lang)",
              "count(xml:*)", "ns:", "ns:1", ":a", "ns::a", "a:b:c", "count(ns :a)", "count(ns: a)"]:
        out.append(e)
    return out


if __name__ == "__main__":
    import os
    here = os.path.dirname(os.path.abspath(__file__))
    for name, lines in (("tree", tree()), ("config", config())):
        with open(os.path.join(here, name + ".expr"), "w", encoding="utf-8") as f:
            f.write(f"# Generated by generate.py for {name}.xml\n")
            seen = set()
            for line in lines:
                if line in seen:
                    continue
                seen.add(line)
                f.write(line + "\n")
