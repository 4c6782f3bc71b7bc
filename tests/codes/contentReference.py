#!/usr/bin/python3
"""What payloads mean, told once more: `contentReference.py STEPS [NUMBER [SEED]]` makes that many payloads, from grammars and by
mutation, has the program STEPS (folvane-content-steps) read them, and fails where the two disagree. Local times are those of TZ.
Of links only those with a plain host or with none are judged: what else is a host is up to the URL parser."""
import json
import os
import random
import re
import subprocess
import sys
import unicodedata
from datetime import datetime, timezone
from urllib.parse import unquote_to_bytes
from zoneinfo import ZoneInfo

SYMBOLOGIES = ["qr"] * 12 + ["ean13", "ean8", "upce"] * 2 + ["aztec", "code128", "other"]
EXTENDERS, PREPENDED, CONTROLS = "\u0301\u200d\u0903\ufe0f\u20e3", "\u0600", "\t\n\v\f\r\x85\u2028\u2029"
NEWLINES = "\n\v\f\r\x85\u2028\u2029"
UNSURE = object()


def clusters(text):
    """User-perceived characters, as far as the characters of the payloads made here need it."""
    found = []
    for c in text:
        last = found[-1][-1] if found else ""
        joins = last and last not in CONTROLS and (c in EXTENDERS or last in PREPENDED and c not in CONTROLS)
        if joins or (last == "\r" and c == "\n"):
            found[-1] += c
        else:
            found.append(c)
    return found


def split(text, separator, most=None, empties=False):
    parts, current, rest = [], "", clusters(text)
    while rest:
        c = rest.pop(0)
        if c != separator:
            current += c
            continue
        if current or empties:
            parts.append(current)
            if len(parts) == most:
                return parts + (["".join(rest)] if rest or empties else [])
        current = ""
    return parts + ([current] if current or empties else [])


def first_piece(text, separator, otherwise):
    return (split(text, separator) or [otherwise])[0]


def without_first(text, count):
    return "".join(clusters(text)[count:])


def begins(text, prefix):
    return clusters(text)[:len(prefix)] == list(prefix)


def is_blank(c):
    return unicodedata.category(c) == "Zs" or c == "\t"


def trim(text, belongs):
    while text and belongs(text[0]):
        text = text[1:]
    while text and belongs(text[-1]):
        text = text[:-1]
    return text


def before_colon(text):
    """What stands before the first colon, and behind it."""
    characters = clusters(text)
    if ":" not in characters:
        return None
    at = characters.index(":")
    return "".join(characters[:at]), "".join(characters[at + 1:])


def product(text, symbology):
    digits = clusters(text)
    if any(unicodedata.numeric(c[0], None) is None for c in digits):
        return None
    if symbology == "ean13" and len(digits) == 13:
        if begins(text, "978") or begins(text, "979"):
            return {"number": text, "kind": "isbn"}
        return {"number": without_first(text, 1), "kind": "upcA"} if begins(text, "0") else {"number": text, "kind": "ean13"}
    if symbology == "ean8" and len(digits) == 8:
        return {"number": text, "kind": "ean8"}
    if symbology == "upce" and len(digits) in (6, 8):
        return {"number": text, "kind": "upcE"}
    return None


def me_fields(text):
    fields, key, value, in_key, escaped = {}, "", "", True, False

    def finish():
        name = trim(key, is_blank).upper()
        if name:
            fields[name] = fields[name] + "\n" + value if name in fields else value
    for c in clusters(text):
        if escaped or (c != "\\" and c != (":" if in_key else ";")):
            key, value, escaped = (key + c, value, False) if in_key else (key, value + c, False)
        elif c == "\\":
            escaped = True
        elif in_key:
            in_key = False
        else:
            finish()
            key, value, in_key = "", "", True
    if not in_key:
        finish()
    return fields


def wifi(text):
    fields = me_fields(without_first(text, 5))
    if not fields.get("S"):
        return None
    return {"ssid": fields["S"], "password": fields.get("P"), "security": fields.get("T", ""),
            "isHidden": fields.get("H", "").lower() == "true"}


def unfolded(text):
    lines = []
    for piece in re.split(f"[{NEWLINES}]", text):
        if lines and clusters(piece)[:1] in ([" "], ["\t"]):
            lines[-1] += piece[1:]
        elif piece:
            lines.append(piece)
    return lines


def v_card(text):
    full, structured, organization, phones, emails = None, None, None, [], []
    for line in unfolded(text):
        if not (parts := before_colon(line)):
            continue
        head, value = parts[0].upper(), parts[1].replace("\\,", ",")
        key = first_piece(head, ";", head)
        if key == "FN":
            full = value
        if key == "N":
            pieces = split(value, ";", empties=True) + ["", ""]
            structured = " ".join(piece for piece in (pieces[1], pieces[0]) if piece)
        if key == "TEL":
            phones.append(value)
        if key == "EMAIL":
            emails.append(value)
        if key == "ORG":
            organization = trim(value.replace(";", " "), is_blank)
    name = full or structured or None
    if name is None and not phones and not emails:
        return None
    return {"vCard": text, "name": name, "phones": phones, "emails": emails, "organization": organization}


def me_card(text):
    fields = me_fields(without_first(text, 7))
    pieces = [trim(piece, is_blank) for piece in split(fields.get("N", ""), ",", 1)]
    name = pieces[1] + " " + pieces[0] if len(pieces) == 2 else "".join(pieces) or None
    phones, emails = split(fields.get("TEL", ""), "\n"), split(fields.get("EMAIL", ""), "\n")
    if name is None and not phones and not emails:
        return None
    lines = ["BEGIN:VCARD", "VERSION:3.0"]
    if name:
        lines += ["FN:" + name, "N:" + pieces[0] + ";" + (pieces[1] if len(pieces) == 2 else "") + ";;;"]
    lines += ["ORG:" + fields["ORG"]] if "ORG" in fields else []
    lines += ["TEL:" + phone for phone in phones] + ["EMAIL:" + email for email in emails]
    for key, start, end in (("URL", "URL:", ""), ("ADR", "ADR:;;", ";;;;"), ("NOTE", "NOTE:", "")):
        lines += [start + fields[key] + end] if key in fields else []
    return {"vCard": "\r\n".join(lines + ["END:VCARD"]), "name": name, "phones": phones, "emails": emails,
            "organization": fields.get("ORG")}


def calendar_time(text):
    if not re.fullmatch(r"[0-9]{8}(T[0-9]{6}Z?)?", text):
        return None
    try:
        wall = datetime.strptime(text.rstrip("Z").ljust(9, "T").ljust(15, "0"), "%Y%m%dT%H%M%S")
    except ValueError:
        return None
    if text.endswith("Z"):
        return wall.isoformat() + "Z"
    local = wall.replace(tzinfo=ZoneInfo(os.environ.get("TZ", "UTC")), fold=1)
    if local.tzinfo.key != "UTC" and not 1970 <= wall.year < 2037:
        return UNSURE
    there = local.astimezone(timezone.utc)
    exists = there.astimezone(local.tzinfo).replace(tzinfo=None) == wall
    return there.replace(tzinfo=None).isoformat() + "Z" if exists else None


def event(text):
    found, inside = {"title": None, "start": None, "end": None, "location": None, "isAllDay": False}, False
    for line in unfolded(text):
        if begins(line.upper(), "BEGIN:VEVENT"):
            inside = True
            continue
        if begins(line.upper(), "END:VEVENT"):
            break
        if not inside or not (parts := before_colon(line)):
            continue
        head, value = parts[0].upper(), parts[1].replace("\\,", ",")
        if begins(head, "SUMMARY"):
            found["title"] = value
        if begins(head, "LOCATION"):
            found["location"] = value
        if begins(head, "DTSTART"):
            found["start"], found["isAllDay"] = calendar_time(value), "VALUE=DATE" in head or len(clusters(value)) == 8
        if begins(head, "DTEND"):
            found["end"] = calendar_time(value)
    if found["title"] is None and found["start"] in (None, UNSURE):
        return found["start"]
    return found


def decoded(text):
    """Nothing where the percent signs make no sense."""
    if re.search("%(?![0-9a-fA-F]{2})", text):
        return None
    try:
        return unquote_to_bytes(text).decode()
    except UnicodeDecodeError:
        return None


def as_can_be(text):
    return text if decoded(text) is None else decoded(text)


def uri(text):
    """The path as written, and the items of the query."""
    match = re.fullmatch(r"[A-Za-z][A-Za-z0-9+.-]*:(?://[^/?#]*)?([^?#]*)(?:\?([^#]*))?(?:#.*)?", text, re.DOTALL)
    if not match:
        return None
    items = [item.split("=", 1) + [None] for item in match[2].split("&")] if match[2] is not None else []
    return match[1], [(as_can_be(item[0]), item[1] if item[1] is None else as_can_be(item[1])) for item in items]


def item(address, name, change=str.lower):
    values = [value for key, value in address[1] if change(key) == name] if address else []
    return values[0] if values else None


def sms(text):
    if begins(text.upper(), "SMSTO:"):
        parts = split(without_first(text, 6), ":", 1) + [None, None]
        return {"number": parts[0] or "", "body": parts[1]}
    rest = without_first(text, 4)
    return {"number": first_piece(rest, "?", rest), "body": item(uri("sms:" + rest), "body")}


def mailto(text):
    address = uri(text)
    return {"address": as_can_be(address[0] if address else without_first(text, 7)),
            "subject": item(address, "subject"), "body": item(address, "body")}


def matmsg(text):
    fields = me_fields(without_first(text, 7))
    return {"address": fields.get("TO", ""), "subject": fields.get("SUB"), "body": fields.get("BODY")}


def geo(text):
    rest = without_first(text, 4)
    parts = split(rest, "?", 1)
    numbers = []
    for piece in split(parts[0] if parts else rest, ","):
        written = first_piece(piece, ";", "")
        if re.fullmatch(r"[+-]?(([0-9]+\.?[0-9]*|\.[0-9]+)(e[+-]?[0-9]+)?|inf|infinity|nan)", written, re.I | re.A):
            numbers.append(float(written))
        elif re.fullmatch(r"[+-]?0x[0-9a-f.]+(p[+-]?[0-9]+)?|nan\(.*\)", written, re.I | re.A):
            return UNSURE
    if len(numbers) < 2 or not abs(numbers[0]) <= 90 or not abs(numbers[1]) <= 180:
        return None
    return {"latitude": numbers[0], "longitude": numbers[1], "query": item(uri("geo:x?" + "".join(parts[1:])), "q", str)}


def link(text):
    if any(c.isspace() and c not in "\x1c\x1d\x1e\x1f" for c in text):
        return None
    start = next((scheme for scheme in ("http://", "https://", "www.") if begins(text.lower(), scheme)), None)
    if start is None:
        return None
    authority = re.split("[/?#]", ("https://" + text if start == "www." else text).split("://", 1)[1])[0]
    if not authority:
        return None
    if not re.fullmatch(r"([a-z0-9]+\.)*[a-z]{1,20}(:[1-9][0-9]{0,3})?", authority, re.I | re.A):
        return UNSURE
    return {"host": authority.lower()}


RULES = [("WIFI:", "wifi", wifi), ("BEGIN:VCARD", "contact", v_card), ("MECARD:", "contact", me_card),
         ("BEGIN:VEVENT", "event", event), ("TEL:", "phone", lambda text: {"number": without_first(text, 4)}),
         ("SMSTO:", "sms", sms), ("SMS:", "sms", sms), ("MAILTO:", "email", mailto), ("MATMSG:", "email", matmsg),
         ("GEO:", "location", geo), ("", "link", link)]


def content(payload, symbology):
    text = trim(payload, lambda c: unicodedata.category(c)[0] == "Z" or c in "\n\v\f\r\x85")
    if found := product(text, symbology):
        return {"kind": "product", "fields": found}
    upper = text.upper()
    for mark, kind, parser in RULES:
        fits = mark in upper if kind == "event" else begins(upper, mark)
        if fits and (found := parser(text)) is not None:
            return UNSURE if found is UNSURE else {"kind": kind, "fields": found}
    return {"kind": "text", "fields": {"text": text}}


SEEDS = [
    "WIFI:S:Home;T:WPA;P:p\\;x;H:true;;", "wifi:p:;s:a\\:b;h:1",
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nFN:Jane\\, Doe\r\nTEL;TYPE=CELL:+34 1\r\nEMAIL:a@b.c\r\n d\r\nORG:Acme;Unit \r\nEND:VCARD",
    "begin:vcard\nn:;Jane\nitem1.TEL:2\nTEL:", "MECARD:N: Doe ;TEL:1\r\n;TEL:2\r;TEL:3\n4;", "MECARD:N:Doe,, Jane,PhD;",
    "MECARD:N:Doe,Jane;TEL:1;TEL:2;EMAIL:a@b;URL:http\\://x.y;ADR:1 Way;NOTE:n;ORG:Acme;;",
    "BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY;X=1:Talk\\, long\nDTSTART:20250102\nDTEND:20250102T030405Z\nLOCATION:Room\nEND:VEVENT\nSUMMARY:no",
    "BEGIN:VEVENT\nDTSTART;VALUE=DATE-TIME:20250330T023000\nDTEND:20251026T023000",
    "TEL:+34 5", "SMSTO:123:a:b", "sms:+1?body=a%20b&BODY=c#d", "SMS:??",
    "MAILTO:a%40b.c?SUBJECT=x&body=y%zz", "mailto://a@b/c?subject", "MATMSG:TO:a@b;SUB:s;BODY:b\\;;;",
    "geo:1,2;u=35?q=x", "geo:abc,10,20,30", "geo:-90,180.0?Q=1&q=a+b%C3%A9",
    "http://example.com/a?b#c", "HTTPS://Example.com:80", "www.example.com", "example.com",
    "9781234567890", "9791234567890", "0123456789012", "12345678", "123456", "\u0661\u4e8c\u00bd45678"]
TOKENS = [
    *":;,\\?&=%#+-.@/ \t0123456789TZaS", *(EXTENDERS + PREPENDED + CONTROLS) * 2, "\r\n", "\r\n ", "\n\t", "\\,", "\\;", "\\\\", ";;",
    "%41", "%C3%A9", "%ff", "%", "é", "\xa0", "\u3000", "ß", "ﬁ", "ſ", "ı", "😀", "٣", "一", "978", "979",
    "WIFI:", "S:", "P:", "T:", "H:true;", "BEGIN:VCARD\n", "FN:", "\nN:", "TEL:", "EMAIL:", "ORG:", "MECARD:",
    "BEGIN:VEVENT\n", "END:VEVENT", "SUMMARY:", "\nDTSTART:", "DTEND", "LOCATION:", ";VALUE=DATE", "20250330", "20240229",
    "20251026T023000", "T030405", "19700101T000000Z", "15000301", "SMSTO:", "sms:", "mailto:", "MATMSG:", "TO:", "SUB:", "body=", "subject=",
    "geo:", "q=", "nan", "inf", "1e5", "90", "180", "http://", "https://", "www.", "a.b"]


def payload(chance):
    text = chance.choice(SEEDS) if chance.random() < 0.9 else ""
    for _ in range(chance.choice([0, 1, 1, 2, 3, 5, 12])):
        first = 0 if chance.random() < 0.1 else min(len(text), 11)  # what a payload begins with mostly stays
        at, length = chance.randint(first, len(text)), chance.choice([0, 0, 1, 1, 4])
        piece = chance.choice(TOKENS) if chance.random() < 0.75 else text[at:at + chance.randint(0, 30)]
        text = text[:at] + piece + text[at + length:]
    text = text if chance.random() < 0.8 else chance.choice([text.upper(), text.lower(), text.swapcase(), text * 2])
    return {"payload": text, "symbology": chance.choice(SYMBOLOGIES[12:] if text[:1].isnumeric() else SYMBOLOGIES)}


def agrees(told, wanted):
    if wanted is UNSURE:
        return True
    if wanted["kind"] == told["kind"] == "link":
        return told["fields"]["url"].split("://")[1].lower().startswith(wanted["fields"]["host"])
    known = {name: value for name, value in wanted["fields"].items() if value is not UNSURE}
    return told["kind"] == wanted["kind"] and {**told["fields"], **known} == told["fields"]


def main():
    number, seed = [int(argument) for argument in sys.argv[2:4]] + [20000, 1][len(sys.argv) - 2:]
    chance = random.Random(seed)
    asked = [payload(chance) for _ in range(number)]
    lines = "\n".join(json.dumps(one) for one in asked) + "\n"
    answers = subprocess.run([sys.argv[1]], input=lines.encode(), stdout=subprocess.PIPE, check=True).stdout
    told = [json.loads(line) for line in answers.splitlines()]
    wanted = [content(**one) for one in asked]
    wrong = [row for row in zip(asked, told, wanted, strict=True) if not agrees(*row[1:])]
    for row in wrong[:10]:
        print(*map(ascii, row), sep="\n", end="\n\n")
    kinds = {kind: sum(one["kind"] == kind for one in told) for kind in sorted({one["kind"] for one in told})}
    print(f"{number} payloads, {len(wrong)} disagreements, {sum(one is UNSURE for one in wanted)} not judged:", kinds)
    sys.exit(bool(wrong) or len(kinds) < 10)


if __name__ == "__main__":
    main()
