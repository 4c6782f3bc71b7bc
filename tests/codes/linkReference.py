#!/usr/bin/python3
"""What is told of links once more, in Python: `linkReference.py STEPS COUNT [SEED]` makes COUNT payloads, harmless and hostile,
has the program STEPS (folvane-link-steps) judge them, and fails where the two disagree."""
import json
import random
import re
import subprocess
import sys
from pathlib import Path

LIST = Path("/usr/share/publicsuffix/public_suffix_list.dat").read_text().split("\n")
RULES = {line.strip().lower() for line in LIST if line.strip() and not line.strip().startswith("//")}
DEEPEST = max(rule.count(".") for rule in RULES) + 1
BRANDS = """paypal apple icloud google gmail microsoft outlook office365 amazon netflix facebook instagram whatsapp telegram tiktok
linkedin twitter spotify adobe dropbox ebay walmart mercadolibre mercadopago dhl fedex ups usps correos santander bbva
caixabank sabadell bankinter ing chase wellsfargo bankofamerica citibank hsbc barclays revolut wise coinbase binance steam
banorte banamex bancomer hacienda""".split()
SHORTENERS = """adf.ly bit.ly bl.ink buff.ly clck.ru cutt.ly dlvr.it goo.gl goo.su ift.tt is.gd j.mp lnkd.in ow.ly qrco.de rb.gy
rebrand.ly s.id short.gy shorturl.at snip.ly t.co t.ly tiny.cc tinyurl.com tr.im trib.al u.to urlz.fr v.gd""".split()
USER, LOOKALIKE, BRAND, HTTP, IP, MIXED, INTERNATIONAL, SHORTENER = range(8)


def pieces(text, marks):
    return [piece for piece in re.split(f"[{marks}]", text) if piece]


def punycode(text):
    try:
        decoded = text.encode().decode("punycode")
        return decoded if len(text.encode()) <= 59 and decoded.encode() is not None else None
    except UnicodeError:
        return None


def is_numeric(host):
    numbers = pieces(host, ".")
    return (host.startswith("[") or ":" in host
            or len(numbers) == 4 and all(re.fullmatch("[+-]?[0-9]+", one) and 0 <= int(one) <= 255 for one in numbers))


def registrable(host):
    labels = pieces(host, ".")
    length = 1
    for i in range(max(len(labels) - DEEPEST, 0), len(labels) if len(labels) > 1 else 0):
        candidate, behind = ".".join(labels[i:]), ".".join(labels[i + 1:])
        if "!" + candidate in RULES:
            return candidate
        if candidate in RULES or behind and "*." + behind in RULES:
            length = max(length, len(labels) - i)
    return ".".join(labels[-length - 1:]) if len(labels) > 1 else host


def printed_host(text):
    authority = re.split("[/?#]", text.partition("://")[2])[0] if "://" in text else ""
    return (pieces((pieces(authority, "@") or [authority])[-1], ":") or [""])[0]


def is_mixed(label):
    classes = ("[A-Za-z]", "[\u0400-\u04ff]", "[\u0370-\u03ff]")
    return sum(bool(re.search(one, label)) for one in classes) > 1


def brand_warning(host, site):
    label = (pieces(site, ".") or [site])[0]
    if label in BRANDS:
        return []
    for brand in BRANDS:
        if brand in pieces(host, ".-"):
            return [[BRAND, brand]]
    read = label.replace("rn", "m").replace("vv", "w").translate(str.maketrans("0135$", "oless"))
    return [[LOOKALIKE, read]] if read != label and read in BRANDS else []


def judged(raw, told, encoded):
    parsed = told["parsedHost"].lower()
    labels = []
    for label in pieces(parsed, "."):
        decoded = punycode(label[4:]) if label.startswith("xn--") else None
        labels.append(decoded if decoded is not None and encoded(decoded) == label else label)
    host, printed = ".".join(labels), printed_host(raw).lower()
    if (not printed.isascii() and encoded(printed) == parsed
            and encoded(registrable(printed)) == encoded(registrable(host))):
        host = printed
    site = host if is_numeric(parsed) else registrable(host)
    warnings = [[HTTP, ""]] * (told["scheme"] == "http") + [[IP, ""]] * is_numeric(parsed)
    warnings += [[USER, told["user"]]] * bool(told["user"])
    if not host.isascii() or any(label.startswith("xn--") for label in parsed.split(".")):
        warnings += [[MIXED if any(map(is_mixed, host.split("."))) else INTERNATIONAL, ""]]
    warnings += [[SHORTENER, ""]] * (site in SHORTENERS) + ([] if is_numeric(parsed) else brand_warning(host, site))
    start = told["absolute"].lower().find(parsed)
    display = told["absolute"] if start < 0 else told["absolute"][:start] + host + told["absolute"][start + len(parsed):]
    return {"host": host, "realSite": site, "warnings": warnings, "displayAddress": display}


class Payloads:
    ODD = "аоеΑνω5бПüßｐ。·\u00ad\u200b\u200d\u200e\u202e\u0301\u3164אش中🎁%$@:/\\?#[].-_ A0x"
    READ_AS = {"m": "rn", "w": "vv", "o": "0", "l": "1", "e": "3", "s": "5", "a": "а", "i": "ӏ"}

    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.rules = sorted(RULES)
        self.marked = [rule for rule in self.rules if rule[0] in "*!"]

    def word(self):
        pick = self.chance
        brand = pick.choice(BRANDS)
        mistaken = "".join(self.READ_AS.get(c, c) if pick.random() < 0.7 else c for c in brand)
        long = "x" * pick.choice([1, 5, 62, 63, 64])
        word = pick.choice([brand, mistaken, mistaken, long, "login", "bücher", "сайт", "αβγ", "аррӏе"])
        for _ in range(pick.choice([0, 0, 0, 1, 2])):
            word += pick.choice(["-" + brand, "-" + pick.choice(BRANDS), pick.choice(self.ODD)])
        return pick.choice([word] * 6 + ["xn--" + word.encode("punycode").decode(), "xn--" + word])

    def host(self):
        pick = self.chance
        if pick.random() < 0.1:
            numbers = [pick.choice("0 1 010 0x7f 255 256 +1".split()) for _ in range(pick.choice([1, 3, 4, 4, 5]))]
            return pick.choice([".".join(numbers)] * 6 + ["[::1]", "[fe80::1%25-ups]", "[::ffff:1.2.3.4]"])
        rule = pick.choice([pick.choice(self.rules), pick.choice(self.marked)])
        rule = rule.replace("*", pick.choice(["a", "www"])).lstrip("!")
        ending = pick.choice([rule, rule, "com", "example", pick.choice(SHORTENERS)])
        return ".".join([self.word() for _ in range(pick.choice([0, 1, 1, 2, 3]))] + [ending])

    def payload(self):
        pick = self.chance
        text = pick.choice(["https://", "https://", "http://", "HTTP://", "", ""])
        text += pick.choice(["", "", "", "", "paypal@", "a:b@", "%20%e2%80%ae@", "@@", self.host() + "@"])
        text += pick.choice(["", "", "", "www."]) + self.host() + pick.choice(["", "", ".", ":8", ":"])
        text += pick.choice(["", "/", "/a/b?c=d#e", "?u=https://" + self.host(), "/?://" + self.host(), "\\@" + self.host()])
        for _ in range(pick.choice([0] * 7 + [1, 1, 3])):
            place = pick.randrange(len(text) + 1)
            text = text[:place] + pick.choice(self.ODD) + text[place + pick.choice([0, 1]):]
        return text


def main(steps, count, seed=1):
    program = subprocess.Popen([steps], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def ask(**request):
        print(json.dumps(request), file=program.stdin, flush=True)
        return json.loads(program.stdout.readline())

    payloads, wrong, seen = Payloads(int(seed)), 0, {}
    for _ in range(int(count)):
        raw = payloads.payload()
        url = raw if raw[:4].lower() == "http" else "https://" + raw
        told = ask(url=url, rawText=raw)
        expected = judged(raw, told, lambda name: ask(name=name)["encoded"])
        for kind, _ in told["warnings"] or [["none", ""]]:
            seen[kind] = seen.get(kind, 0) + bool(told["parsedHost"])
        if expected != {key: told[key] for key in expected}:
            wrong += 1
            print(f"{raw!r}: {told}, expected {expected}")
    print(f"{count} links, {wrong} judged otherwise; of those with a host, by warning: {seen}")
    sys.exit(wrong > 0 or min(seen.get(kind, 0) for kind in range(8)) == 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
