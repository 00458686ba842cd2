// SPDX-License-Identifier: LGPL-2.1-or-later
"use strict";

(() => {
    const find = (id) => document.getElementById(id);
    const root = document.documentElement;
    const list = find("packages");
    const search = find("search");
    const language = find("language");
    const order = find("order");
    const only = find("only");
    const theme = find("theme");

    /* Languages */

    // Regions whose language has another parent than itself without a region.
    const kinships = [
        ["en", "en-150", "AT BE CH DE DK FI NL SE SI"],
        ["es", "es-419", "AR BO BR BZ CL CO CR CU DO EC GT HN MX NI PA PE PR PY SV US UY VE"],
        ["pt", "pt-PT", "AO CH CV FR GQ GW LU MO MZ ST TL"],
    ].map(([code, parent, regions]) => ({ code, parent, regions: new Set(regions.split(" ")) }));
    // Regions where English is not that of the rest of the world.
    const usRegions = new Set(["", ..."US AS BI GU MH MP PH PR UM VI".split(" ")]);

    const parsed = new Map();

    // What a language tag says; null for one that says nothing.
    const parse = (text) => {
        if (!parsed.has(text)) {
            let tag = null;
            try {
                const locale = new Intl.Locale(text);
                const name = locale.baseName;
                const base = [locale.language, locale.script, locale.region].filter(Boolean).join("-");
                tag = {
                    text: name,
                    language: locale.language,
                    written: locale.script || "",
                    script: locale.maximize().script || "",
                    region: locale.region || "",
                    variant: name.slice(base.length + 1),
                    home: new Intl.Locale(locale.language).maximize().region || "",
                };
            } catch {
                // Strangers wrote it.
            }
            parsed.set(text, tag);
        }
        return parsed.get(text);
    };

    const isUsEnglish = (tag) => tag.language === "en" && usRegions.has(tag.region);

    const parent = (tag) => {
        const without = (...parts) => parse([tag.language, tag.written, ...parts].filter(Boolean).join("-"));
        if (tag.variant)
            return without(tag.region);
        if (!tag.region)
            return null;
        const kin = kinships.find(({ code, regions }) => code === tag.language && regions.has(tag.region));
        if (kin)
            return parse(kin.parent);
        if (tag.language === "en" && tag.region !== "001" && !isUsEnglish(tag))
            return parse("en-001");
        if (tag.language === "zh" && tag.region === "MO" && tag.script === "Hant")
            return without("HK");
        // Without its region the language may be written in another script; this one stays what it is.
        const wider = without();
        return wider.script === tag.script ? wider : { ...wider, script: tag.script };
    };

    const isSame = (a, b) =>
        a.language === b.language && a.script === b.script && a.region === b.region && a.variant === b.variant;

    // The one of these tags that a device in the wanted language takes, as Android does since version 7: its own, a
    // parent's, a relative's in the same language and script, the empty one's; undefined when there is none of them.
    const choose = (tags, wanted) => {
        const fallback = tags.includes("") ? "" : undefined;
        const asked = wanted ? parse(wanted) : null;
        if (!asked)
            return fallback;
        const kin = tags.filter((text) => parse(text)?.language === asked.language);
        for (let tag = asked; tag; tag = parent(tag)) {
            const own = kin.find((text) => isSame(parse(text), tag));
            if (own !== undefined)
                return own;
        }
        // What is for every language is the English of the United States in most applications.
        const isRelative = (tag) =>
            tag.script === asked.script && !(fallback === "" && isUsEnglish(asked) && !isUsEnglish(tag));
        const isHome = (text) => parse(text).region === parse(text).home;
        const relatives = kin.filter((text) => isRelative(parse(text))).sort();
        return relatives.find(isHome) ?? relatives[0] ?? fallback;
    };

    /* Cards */

    // Marks above and below letters: of Latin, Greek and Cyrillic; of Hebrew; of Arabic; and common ones.
    const marks = new RegExp(
        "[\\u0300-\\u036f\\u1ab0-\\u1aff\\u1dc0-\\u1dff\\u0591-\\u05c7" +
            "\\u0610-\\u061a\\u0640\\u064b-\\u065f\\u0670\\u20d0-\\u20ff\\ufe20-\\ufe2f]",
        "g",
    );

    // Without case and without marks. "ς" is the "σ" of the end of a word.
    const fold = (text) =>
        text
            .toUpperCase()
            .toLowerCase()
            .normalize("NFKD")
            .replace(marks, "")
            .replaceAll("ς", "σ");

    const readLauncher = (node) => {
        const labels = new Map();
        for (const line of (node.dataset.labels || "").split("\n")) {
            const end = line.indexOf("=");
            if (end >= 0)
                labels.set(line.slice(0, end), line.slice(end + 1));
        }
        // Packages have few different sets of languages, each of which is looked through once.
        const tags = [...labels.keys()];
        return { node, labels, tags, key: tags.join(), unlabelled: labels.has("") ? labels.get("") : node.textContent };
    };

    const readCard = (node) => {
        const title = node.querySelector("h2 bdi");
        const launchers = [...node.querySelectorAll(".label")].map(readLauncher);
        return {
            node,
            title,
            launchers: title.dataset.labels ? [readLauncher(title)] : launchers,
            name: (node.querySelector(".package") ?? title).textContent,
            sdk: Number(node.dataset.sdk),
            rank: Number(node.dataset.rank),
            isHidden: false,
        };
    };

    const cards = [...list.children].map(readCard);

    // What a search looks through, made when there is one.
    const haystack = (card) => {
        if (card.haystack === undefined) {
            const texts = [card.title.textContent];
            for (const { labels } of card.launchers)
                texts.push(...labels.values());
            for (const node of card.node.querySelectorAll("code, .file, .signer"))
                texts.push(node.textContent);
            card.haystack = fold(texts.join("\n"));
        }
        return card.haystack;
    };

    const shown = () => cards.filter((card) => !card.isHidden);

    // One card is reached by Tab, the others from there by arrows.
    let current = null;
    const setCurrent = (card) => {
        if (current)
            current.node.tabIndex = -1;
        current = card ?? null;
        if (current)
            current.node.tabIndex = 0;
    };

    const filter = () => {
        const words = fold(search.value).split(/\s+/).filter(Boolean);
        let count = 0;
        for (const card of cards) {
            const isHit = (!only.checked || card.rank > 0) && words.every((word) => haystack(card).includes(word));
            count += isHit ? 1 : 0;
            if (card.isHidden === isHit) {
                card.isHidden = !isHit;
                card.node.hidden = !isHit;
            }
        }
        const all = cards.length === 1 ? "1 package" : `${cards.length} packages`;
        find("count").textContent = count === cards.length ? all : `${count} of ${all}`;
        find("nothing").hidden = count > 0 || cards.length === 0;
        if (!current || current.isHidden)
            setCurrent(shown()[0]);
    };

    const sort = () => {
        const collator = new Intl.Collator(language.value || undefined, { numeric: true });
        const text = (a, b) => collator.compare(a.title.textContent, b.title.textContent);
        const name = (a, b) => collator.compare(a.name, b.name);
        const orders = {
            label: (a, b) => text(a, b) || name(a, b),
            package: (a, b) => name(a, b) || text(a, b),
            sdk: (a, b) => a.sdk - b.sdk || text(a, b),
            rank: (a, b) => b.rank - a.rank || text(a, b),
        };
        cards.sort(orders[order.value]);
        const focused = list.contains(document.activeElement) ? document.activeElement : null;
        list.append(...cards.map((card) => card.node));
        focused?.focus({ preventScroll: true });
        setCurrent(shown()[0]);
    };

    const translate = () => {
        const wanted = language.value;
        const choices = new Map();
        const choice = (launcher) => {
            if (!choices.has(launcher.key))
                choices.set(launcher.key, choose(launcher.tags, wanted));
            return choices.get(launcher.key);
        };
        const show = (node, launcher, tag) => {
            const text = tag === undefined ? launcher.unlabelled : launcher.labels.get(tag);
            if (node.textContent !== text)
                node.textContent = text;
            if (tag)
                node.lang = tag;
            else
                node.removeAttribute("lang");
        };
        for (const card of cards) {
            for (const launcher of card.launchers)
                show(launcher.node, launcher, choice(launcher));
            if (card.launchers.length > 0)
                show(card.title, card.launchers[0], choice(card.launchers[0]));
        }
    };

    const languageName = (tag) => {
        try {
            return new Intl.DisplayNames([tag], { type: "language", languageDisplay: "standard" }).of(tag);
        } catch {
            return tag;
        }
    };

    const fillLanguages = () => {
        const tags = new Set(cards.flatMap((card) => card.launchers.flatMap((launcher) => launcher.tags)));
        tags.delete("");
        const collator = new Intl.Collator();
        const options = [...tags].map((tag) => {
            const name = languageName(tag);
            // In the direction of its own language, which does not turn the menu.
            const option = new Option(`\u2068${name}\u2069`, tag);
            if (parse(tag))
                option.lang = tag;
            return { name, option };
        });
        options.sort((a, b) => collator.compare(a.name, b.name));
        language.append(...options.map(({ option }) => option));
        // What is for every language is English in most packages, and is what a reader of English is given.
        for (const wanted of navigator.languages) {
            const tag = choose([...tags, ""], wanted);
            if (tag || parse(wanted)?.language === "en") {
                language.value = tag;
                break;
            }
        }
    };

    /* Keyboard */

    const columns = () => getComputedStyle(list).gridTemplateColumns.split(" ").length;

    const goTo = (card) => {
        if (!card)
            return;
        setCurrent(card);
        card.node.focus({ preventScroll: true });
        card.node.scrollIntoView({ block: "nearest" });
    };

    const unfold = (card) => {
        const folds = [...card.node.querySelectorAll("details")];
        const isOpen = folds.every((fold) => fold.open);
        for (const fold of folds)
            fold.open = !isOpen;
    };

    const clear = () => {
        search.value = "";
        filter();
    };

    const isTyping = (target) => target.matches("input:not([type=checkbox]), select, textarea");

    document.addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey || event.isComposing)
            return;
        const { key, target } = event;
        const card = target.closest?.(".card") ? cards.find(({ node }) => node === target.closest(".card")) : null;
        if (key === "Escape" && search.value) {
            clear();
        } else if (key === "/" && !isTyping(target)) {
            search.focus();
            search.select();
        } else if (key === "ArrowDown" && target === search) {
            goTo(shown()[0]);
        } else if (key === "Enter" && card && target === card.node) {
            unfold(card);
        } else if (card) {
            const visible = shown();
            const here = visible.indexOf(card);
            const steps = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -columns(), ArrowDown: columns() };
            const ends = { Home: 0, End: visible.length - 1 };
            if (key === "ArrowUp" && here < columns())
                search.focus();
            else if (key in steps)
                goTo(visible[here + steps[key]]);
            else if (key in ends)
                goTo(visible[ends[key]]);
            else
                return;
        } else {
            return;
        }
        event.preventDefault();
    });

    list.addEventListener("focusin", (event) => {
        const card = cards.find(({ node }) => node === event.target);
        if (card)
            setCurrent(card);
    });

    /* Light and dark */

    const dark = matchMedia("(prefers-color-scheme: dark)");
    const isDark = () => (root.dataset.theme ? root.dataset.theme === "dark" : dark.matches);
    const showTheme = () => theme.setAttribute("aria-checked", String(isDark()));
    dark.addEventListener("change", showTheme);
    theme.addEventListener("click", () => {
        root.dataset.theme = isDark() ? "light" : "dark";
        showTheme();
    });

    /* Paper */

    let folded = [];
    addEventListener("beforeprint", () => {
        folded = [...list.querySelectorAll("details:not([open])")];
        for (const fold of folded)
            fold.open = true;
    });
    addEventListener("afterprint", () => {
        for (const fold of folded)
            fold.open = false;
        folded = [];
    });

    search.addEventListener("input", filter);
    only.addEventListener("change", filter);
    order.addEventListener("change", sort);
    language.addEventListener("change", () => {
        translate();
        sort();
    });
    find("reset").addEventListener("click", () => {
        only.checked = false;
        clear();
        search.focus();
    });

    for (const card of cards)
        card.node.tabIndex = -1;
    fillLanguages();
    translate();
    filter();
    sort();
    showTheme();
    find("tools").hidden = cards.length === 0;
    find("total").hidden = cards.length > 0;
})();
