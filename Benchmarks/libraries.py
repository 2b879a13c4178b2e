"""Made-up libraries and feeds, the same every time, as large as is asked for."""

import random
from datetime import datetime, timedelta


def favourites(count, icon_size=1400):
    """A library as a person might have it: groups of a hundred, every record with an icon of its own."""
    source = random.Random(7)
    groups = []
    for i in range(count):
        if i % 100 == 0:
            groups.append({"Name": f"Group {i // 100}", "Children": []})
        identifier = f"{source.getrandbits(128):032X}"
        groups[-1]["Children"].append({
            "Name": f"Favourite number {i}", "UUID": identifier, "Type": source.randrange(1, 17),
            "Date": datetime(2026, 1, 1) + timedelta(minutes=i), "Label": source.randrange(8),
            "Location": f"Research › Sources {i % 37}", "Icon": source.randbytes(icon_size)})
    return groups


def reading_list(count, icon_size=1400):
    """A long reading list: pages of the web with an icon of their site, and documents of the library."""
    source = random.Random(8)
    items = []
    for i in range(count):
        item = {"title": f"Something to be read, number {i}", "unread": source.random() < .4, "type": source.randrange(1, 17),
                "date": datetime(2026, 1, 1) + timedelta(minutes=i)}
        if i % 4 == 0:
            item["URL"] = f"x-foliovault-item://{source.getrandbits(128):032X}"
        else:
            item["URL"] = f"https://www.site{i % 97}.example/articles/{source.getrandbits(48):x}?from=list&page={i}"
        item["icon"] = source.randbytes(icon_size)
        items.append(item)
    return items


def blog(count):
    """A feed as a blog's software writes it: articles in German and English as HTML in sections, half of them tips."""
    source = random.Random(7)
    words = ("the a to of and in documents search archive smart rules you can workspace automate window database folder tags "
             "die der und Suche für größere Dokumente Ordner übersichtlich können Schlagwörter automatisch über Regel öffnen "
             "schließen wählen").split()

    def sentence():
        text = [source.choice(words) for _ in range(source.randrange(6, 18))]
        if source.random() < .3:
            text[2] = f'<a href="https://www.foliovault.example/blog/{source.randrange(900)}" target="_blank">{text[2]}</a>'
        if source.random() < .3:
            text[-1] = f"<strong>{text[-1]}</strong>"
        if source.random() < .2:
            text[1] += source.choice(("&nbsp;&amp;", " &#8211;", "&#8217;s", " &hellip;"))
        return " ".join(text).capitalize() + "."

    def paragraph():
        kind = source.random()
        if kind < .1:
            return f'<h2 class="wp-block-heading">{sentence()}</h2>'
        if kind < .2:
            return ('<figure class="wp-block-image size-large"><img loading="lazy" width="1024" height="640" '
                    f'src="https://www.foliovault.example/uploads/{source.randrange(10**6)}.png" alt="" /></figure>')
        if kind < .35:
            return "<ul>\n" + "".join(f"<li>{sentence()}</li>\n" for _ in range(3)) + "</ul>"
        return "<p>" + " ".join(sentence() for _ in range(source.randrange(1, 6))) + "</p>"

    def item(number):
        link = f"https://www.foliovault.example/blog/{number}-{source.choice(words[:16])}"
        date = datetime(2026, 1, 1) - timedelta(hours=7 * number)
        categories = ["Tips"] * (number % 2) + source.sample(("News", "Releases", "Workflow", "Deutsch", "Automation"), 2)
        html = ""
        while len(html) < 2350:
            html += paragraph() + "\n\n\n\n"
        return (f"\t<item>\n\t\t<title>{sentence()[:40].split('<')[0].split('&')[0]} &#038; {number}</title>\n\t\t<link>{link}</link>\n"
                f"\t\t<comments>{link}#respond</comments>\n\t\t<dc:creator><![CDATA[Jane]]></dc:creator>\n"
                f"\t\t<pubDate>{date:%a, %d %b %Y %H:%M:%S} +0000</pubDate>\n"
                + "".join(f"\t\t<category><![CDATA[{category}]]></category>\n" for category in categories)
                + f'\t\t<guid isPermaLink="false">https://www.foliovault.example/?p={number}</guid>\n'
                f"\t\t<description><![CDATA[{html}]]></description>\n\t\t<slash:comments>0</slash:comments>\n\t</item>\n")

    return ('<?xml version="1.0" encoding="UTF-8"?>\n<rss version="2.0" xmlns:dc="http://purl.org/dc/elements/1.1/" '
            'xmlns:slash="http://purl.org/rss/1.0/modules/slash/">\n<channel>\n\t<title>Blog</title>\n'
            "\t<link>https://www.foliovault.example/blog</link>\n" + "".join(map(item, range(count))) + "</channel>\n</rss>\n")
