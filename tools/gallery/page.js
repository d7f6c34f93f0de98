"use strict";

// What make_page.py has put in: topics and alerts as alert_facts prints them, languages, and the sizes of all
// pictures by scale, language and name.
const data = JSON.parse(document.getElementById("data").textContent);
const byId = id => document.getElementById(id);

const kEnglish = "en";
const kDotsPerInchAt100 = 96;
const kHitsShown = 3;
const kContrastFolders = new Map([
    ["high-contrast-black", "White on black"],
    ["high-contrast-white", "Black on white"],
]);
// What a picture shows beside or instead of the alert itself, by a part of its name.
const kKindsOfPictures = [
    [/-help$/, "what Help says"],
    [/-reminder-missing$/, "what OK says while no time is chosen"],
    [/-with-link$/, "on a Chinese system, with the link to the cartridge check"],
    [/-details$/, "the details of the cartridge check"],
    [/-other-/, "on a printer outside the K7400 family"],
];

// What an alert says, in the order of reading, and what of it can be its name.
const kRoles = ["headline", "duplexTitle", "message", "detail", "step1", "step2", "step3", "suppliesName",
    "suppliesPages", "suppliesComment", "suppliesDetail", "reminderLabel"];
const kNameRoles = ["headline", "duplexTitle", "message", "detail", "title"];

const languages = new Map(data.languages.map(language => [language.id, language]));
const alerts = new Map(data.alerts.map(alert => [alert.id, alert]));
const order = data.topics.flatMap(topic => data.alerts.filter(alert => alert.topic === topic.id));
const scales = Object.keys(data.pictures).map(Number);
const isPictured = id => scales.some(scale => id in data.pictures[scale]);

// ---- Addresses -----------------------------------------------------------------------------------------

// What is shown, as the part of the address after "#" says it.
function stateOfAddress() {
    const words = new URLSearchParams(location.hash.slice(1));
    const scale = Number(words.get("scale"));
    return {
        alert: words.get("alert") ?? "",
        view: words.get("view") ?? "",
        search: words.get("search") ?? "",
        language: languages.has(words.get("language")) ? words.get("language") : kEnglish,
        scale: scales.includes(scale) ? scale : scales[0],
    };
}

let state = stateOfAddress();

// The address of a view in the language and scale that are chosen, unless it names others.
function addressOf(view) {
    const { language, scale } = { ...state, ...view };
    const words = new URLSearchParams();
    for (const name of ["alert", "view", "search"])
        if (view[name]) words.set(name, view[name]);
    if (language !== kEnglish) words.set("language", language);
    if (scale !== scales[0]) words.set("scale", scale);
    return "#" + words;
}

// ---- Pieces --------------------------------------------------------------------------------------------

// An element with these attributes and children; a child that is nothing is left out.
function make(name, attributes, ...children) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(attributes ?? {}))
        element.setAttribute(key, value);
    element.append(...children.flat(Infinity).filter(Boolean));
    return element;
}

const link = (view, ...children) => make("a", { href: addressOf(view) }, ...children);

// An element whose text is in a language.
function inLanguage(name, id, attributes, ...children) {
    const { tag, direction } = languages.get(id);
    return make(name, { lang: tag, dir: direction, ...attributes }, ...children);
}

const textsOf = (alert, id) => alert.texts[id] ?? alert.texts[kEnglish];
const inOneLine = text => text.replace(/\n/g, " ");

// The text that stands for the alert as its name, which in English is its headline here. Some alerts have none.
function nameRoleOf(alert) {
    return kNameRoles.find(role => inOneLine(alert.texts[kEnglish][role] ?? "") === alert.headline);
}

const nameIn = (alert, id) => inOneLine(textsOf(alert, id)[nameRoleOf(alert)] ?? "");

function heading(...children) {
    return make("h1", { tabindex: "-1" }, ...children);
}

// ---- Pictures ------------------------------------------------------------------------------------------

// The picture of this name that comes closest to a language and a scale: of this language before this scale.
function pictureOf(name, language, scale) {
    const wanted = [[language, scale], ...scales.map(other => [language, other]), [kEnglish, scale],
        ...scales.map(other => [kEnglish, other]),
        ...scales.flatMap(other => Object.keys(data.pictures[other]).map(any => [any, other]))];
    for (const [id, percent] of wanted) {
        const size = data.pictures[percent][id]?.[name];
        if (size) return { name, language: id, scale: percent, width: size[0], height: size[1] };
    }
    return null;
}

const kindOf = name => (kKindsOfPictures.find(([part]) => part.test(name)) ?? [null, ""])[1];

function image(picture, alt, isLazy) {
    const { scale, language, name, width, height } = picture;
    return make("img", {
        src: [scale, language, name + ".png"].map(encodeURIComponent).join("/"), alt, width, height,
        loading: isLazy ? "lazy" : "eager",
    });
}

function nameOfPicture(alert, picture) {
    const kind = kindOf(picture.name);
    const language = languages.get(picture.language)?.english ?? picture.language;
    return `“${alert.headline}” in ${language} at ${picture.scale} %` + (kind ? `: ${kind}` : "");
}

// Says where a picture is not of the language and scale that were asked for, and how to get that.
function substituteNote(picture) {
    if (picture.language === state.language && picture.scale === state.scale) return null;
    const dots = state.scale * kDotsPerInchAt100 / 100;
    const scale = dots === kDotsPerInchAt100 ? "" : `--dpi ${dots} `;
    return make("p", { class: "quiet substitute" },
        `There is no picture in ${languages.get(state.language).english} at ${state.scale} %; this one is in ` +
        `${languages.get(picture.language)?.english ?? picture.language} at ${picture.scale} %. `,
        make("code", {}, `./run gallery ${scale}${state.language}`), " makes it.");
}

const picturesOf = alert => alert.pictures.map(name => pictureOf(name, state.language, state.scale))
    .filter(picture => picture !== null);

function figures(alert) {
    return picturesOf(alert).map((picture, index) => {
        const kind = kindOf(picture.name);
        return make("figure", {}, image(picture, nameOfPicture(alert, picture)),
            make("figcaption", {}, kind && kind[0].toUpperCase() + kind.slice(1),
                index === 0 && substituteNote(picture)));
    });
}

// ---- Facts: each function returns a title and what stands under it, or null where there is nothing to say --------

const paragraph = text => make("p", {}, text);

// What is said in the language of the page, a paragraph for each text; the alert's name stands out.
function paragraphs(texts, nameRole) {
    return kRoles.filter(role => texts[role]).map(role => inLanguage("p", state.language, { class: "said" },
        role === nameRole ? make("strong", {}, texts[role]) : texts[role]));
}

function saidBy(alert) {
    return [`What it says in ${languages.get(state.language).english}`,
        paragraphs(textsOf(alert, state.language), nameRoleOf(alert))];
}

function codeOf({ code, last, subcode }) {
    if (code === undefined) return `subcode ${subcode}`;
    return last > code ? `${code} to ${last}` : String(code);
}

function tableOfStatuses(statuses) {
    return make("table", {},
        make("thead", { class: "unseen" }, make("tr", {}, make("th", { scope: "col" }, "Status code"),
            make("th", { scope: "col" }, "Name"))),
        make("tbody", {}, statuses.map(status => make("tr", {},
            make("th", { scope: "row", class: "code" }, codeOf(status)), make("td", {}, status.name)))));
}

function statusesOf({ statuses }) {
    return statuses.length > 0 && ["What brings it up", tableOfStatuses(statuses)];
}

// The names of a control, in English and as it shows, and its keys; below them what they do.
function actionOf({ control, text, keys, does }) {
    const said = state.language !== kEnglish && text[state.language];
    return [make("dt", {}, control, said && [" – ", inLanguage("bdi", state.language, {}, said)],
        keys.map(key => [" ", make("kbd", {}, key)])), make("dd", {}, `${does[0].toUpperCase()}${does.slice(1)}.`)];
}

function actionsOf({ actions }) {
    return actions.length > 0 && ["What its controls do", make("dl", {}, actions.map(actionOf))];
}

function rulesOf({ rules }) {
    return rules.length > 0 && ["When it comes again, and when it goes", rules.map(paragraph)];
}

function variantsOf({ variants }) {
    return variants.length > 0 && ["Where it says something else", variants.map(({ when, texts }) =>
        [make("p", { class: "quiet" }, `${when}:`), paragraphs(texts[state.language] ?? texts[kEnglish])])];
}

function helpOf(alert) {
    const { help } = textsOf(alert, state.language);
    return help && ["What Help says", inLanguage("p", state.language, { class: "said" }, help)];
}

function factsOf(alert, rank) {
    const facts = [statusesOf(alert), ["On which printers", paragraph(alert.printers)], rulesOf(alert),
        alert.alertMask.text && ["What hides it", paragraph(alert.alertMask.text)], actionsOf(alert),
        saidBy(alert), helpOf(alert), variantsOf(alert)];
    return make("div", { class: "facts" }, facts.filter(Boolean).map(([title, ...content]) =>
        make("section", {}, make(`h${rank}`, {}, title), ...content)));
}

// ---- Views: each returns the title of the window and what the page shows ------------------------------------

// An alert with its picture and its facts, under a heading of this rank.
function article(alert, rank) {
    const own = nameIn(alert, state.language);
    const { note } = languages.get(state.language);
    return make("article", { class: "alert" },
        rank === 1 ? heading(alert.headline) : make(`h${rank}`, {}, link({ alert: alert.id }, alert.headline)),
        state.language !== kEnglish && own && inLanguage("p", state.language, { class: "own" }, own),
        make("div", { class: state.scale > 100 ? "columns large" : "columns" },
            make("div", { class: "shown" }, figures(alert),
                note && make("p", { class: "quiet note" }, `In these pictures, which are made under Wine, ${note}`)),
            factsOf(alert, rank + 1)));
}

const topicOf = alert => data.topics.find(topic => topic.id === alert.topic);

// A link to the alert that comes this many steps later.
function turn(alert, step, relation, words, key) {
    const other = order[order.indexOf(alert) + step];
    return other && make("a", { href: addressOf({ alert: other.id }), rel: relation, title: other.headline,
        "aria-label": `${words}: ${other.headline}`, "aria-keyshortcuts": key },
    step < 0 ? `← ${words}` : `${words} →`);
}

function viewOfAlert(alert) {
    return [alert.headline, [
        make("nav", { class: "where", "aria-label": "Alerts" },
            make("span", {}, link({}, "All alerts"), ` › ${topicOf(alert).name}`),
            make("span", { class: "turn" }, link({ alert: alert.id, view: "languages" }, "All languages"),
                turn(alert, -1, "prev", "Previous", "ArrowLeft"), turn(alert, 1, "next", "Next", "ArrowRight"))),
        article(alert, 1)]];
}

// A card with a heading of this rank, which is a link, below a picture if there is one.
function card(rank, view, picture, alt, ...words) {
    return make("li", {}, picture && make("div", { class: "frame" }, image(picture, alt, true)),
        make(`h${rank}`, {}, link(view, ...words)));
}

function cardOfAlert(alert) {
    const picture = picturesOf(alert)[0] ?? null;
    const own = nameIn(alert, state.language);
    const made = card(3, { alert: alert.id }, picture, picture ? nameOfPicture(alert, picture) : "", alert.headline);
    if (state.language !== kEnglish && own) made.append(inLanguage("p", state.language, { class: "quiet" }, own));
    made.append(make("p", { class: "quiet" }, alert.statuses.map(codeOf).join(", ")));
    return made;
}

function viewOfAll() {
    return ["All alerts", [heading("All alerts"),
        make("p", { class: "intro" }, "What each alert looks like and says, what brings it up, what its buttons " +
            "do, and why it comes or does not come a second time. The pictures are those of the real program."),
        data.topics.map(topic => make("section", {}, make("h2", { id: `topic-${topic.id}` }, topic.name),
            make("ul", { class: "cards", "aria-labelledby": `topic-${topic.id}` },
                order.filter(alert => alert.topic === topic.id).map(cardOfAlert)))),
        common()]];
}

// What holds for every alert, and the statuses that have none.
function common() {
    return make("aside", { class: "common" }, make("h2", {}, "What holds for all alerts"),
        make("ul", {}, data.always.map(fact => make("li", {}, fact))), silent(data.noAlert));
}

function cardOfLanguage(alert, language) {
    const picture = pictureOf(alert.pictures[0], language.id, state.scale);
    const isThere = picture?.language === language.id;
    const said = textsOf(alert, language.id);
    const made = card(2, { alert: alert.id, language: language.id }, isThere ? picture : null,
        isThere ? nameOfPicture(alert, picture) : "", inLanguage("span", language.id, {}, language.own),
        language.own === language.english ? "" : ` – ${language.english}`);
    made.append(inLanguage("p", language.id, isThere ? { class: "quiet" } : {}, nameIn(alert, language.id)));
    if (!isThere) made.append(inLanguage("p", language.id, { class: "quiet said" },
        kRoles.filter(role => said[role] && role !== nameRoleOf(alert)).map(role => said[role]).join("\n")));
    return made;
}

function viewOfLanguages(alert) {
    const spoken = data.languages.filter(language => language.id in alert.texts);
    const title = `“${alert.headline}” in all languages`;
    return [title, [
        make("nav", { class: "where", "aria-label": "Alerts" },
            make("span", {}, link({}, "All alerts"), " › ", link({ alert: alert.id }, alert.headline))),
        heading(title),
        make("ul", { class: "cards" }, [...spoken.filter(({ id }) => isPictured(id)),
            ...spoken.filter(({ id }) => !isPictured(id))].map(language => cardOfLanguage(alert, language)))]];
}

function viewOfEverything() {
    return ["All alerts with their facts", [heading("All alerts with their facts"),
        order.map(alert => article(alert, 2)), common()]];
}

// Names of pictures that are no numbers of types are names of dialogs.
function shownInContrast(name) {
    const alert = data.alerts.find(({ type }) => String(type) === name);
    return alert ? alert.headline : name.replace(/-/g, " ");
}

function viewOfContrast() {
    const title = "High contrast";
    return [title, [heading(title),
        make("p", { class: "intro" }, "One alert of each kind in two high-contrast schemes."),
        [...kContrastFolders].map(([folder, words]) => {
            const names = new Set(scales.flatMap(scale => Object.keys(data.pictures[scale][folder] ?? {})));
            const pictures = [...names].map(name => pictureOf(name, folder, state.scale));
            return pictures.length > 0 && make("section", {}, make("h2", {}, words),
                make("ul", { class: "cards large" }, pictures.map(picture => make("li", {},
                    image(picture, `“${shownInContrast(picture.name)}” in ${words.toLowerCase()}`, true)))));
        })]];
}

// ---- Search ----------------------------------------------------------------------------------------------

// Letters without their accents and case.
const folded = text => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase();

// Everything that can be found, made at the first search. The texts of the language on the page and the English
// ones are the first that an alert is found by.
let found = null;

function findable(alert) {
    const entries = alert.statuses.map(status => (
        { label: "Status", language: kEnglish, text: `${codeOf(status)} ${status.name}`, status, isName: true }));
    const nameRole = nameRoleOf(alert);
    for (const [id, said] of Object.entries(alert.texts))
        for (const role of [...new Set([nameRole, ...kRoles, "help"])].filter(role => said[role])) {
            const part = role === nameRole ? "headline" : role === "help" ? "help" : "text";
            entries.push({ label: `${languages.get(id).english}, ${part}`, language: id, text: inOneLine(said[role]),
                isName: role === nameRole });
        }
    for (const entry of entries) entry.folded = folded(entry.text);
    return { alert, entries };
}

// Whether a word stands in a text, or is a number within a range of statuses.
const hasWord = (entry, word) => entry.folded.includes(word) ||
    /^\d+$/.test(word) && entry.status?.code <= Number(word) && Number(word) <= entry.status.last;

// The alerts that have all words in one text, with these texts; those whose name has them come first.
function find(words) {
    found ??= order.map(findable);
    const wanted = folded(words).split(/\s+/).filter(Boolean);
    const rank = ({ language, isName }) =>
        (language === state.language ? 0 : language === kEnglish ? 1 : 2) + (isName ? 0 : 3);
    return found.map(({ alert, entries }) => ({
        alert,
        hits: entries.filter(entry => wanted.every(word => hasWord(entry, word)))
            .sort((one, other) => rank(one) - rank(other)),
    })).filter(({ hits }) => hits.length > 0).sort((one, other) => rank(one.hits[0]) - rank(other.hits[0]));
}

// The named statuses that have all words and open no alert.
function findSilent(words) {
    const wanted = folded(words).split(/\s+/).filter(Boolean);
    return data.noAlert.filter(status => {
        const entry = { folded: folded(`${codeOf(status)} ${status.name}`), status };
        return wanted.every(word => hasWord(entry, word));
    });
}

// The text with the words marked, as far as they stand in it letter by letter.
function marked(text, words) {
    const lower = text.toLowerCase();
    for (const word of words.toLowerCase().split(/\s+/).filter(Boolean)) {
        const at = lower.length === text.length ? lower.indexOf(word) : -1;
        if (at >= 0)
            return [text.slice(0, at), make("mark", {}, text.slice(at, at + word.length)),
                text.slice(at + word.length)];
    }
    return [text];
}

function hitOf({ alert, hits }, words) {
    const view = hits[0].language === kEnglish ? {} : { language: hits[0].language };
    const picture = picturesOf(alert)[0];
    return make("li", {}, picture ? image(picture, nameOfPicture(alert, picture), true) : make("span"),
        make("div", {}, make("h2", {}, link({ alert: alert.id, ...view }, alert.headline)),
            hits.slice(0, kHitsShown).map(hit => make("p", {}, make("span", { class: "quiet" }, `${hit.label}: `),
                inLanguage("bdi", hit.language, {}, marked(hit.text, words)))),
            hits.length > kHitsShown && make("p", { class: "quiet" },
                `and in ${hits.length - kHitsShown} more texts`)));
}

function silent(statuses) {
    return statuses.length > 0 && make("section", {}, make("h2", {}, "Statuses that open no alert"),
        tableOfStatuses(statuses));
}

function viewOfSearch(words) {
    const results = find(words);
    const others = findSilent(words);
    const count = results.length === 1 ? "1 alert" : `${results.length} alerts`;
    const title = results.length > 0 ? `${count} with “${words}”`
        : others.length > 0 ? `No alert with “${words}”` : `Nothing found for “${words}”`;
    return [title, [heading(title),
        results.length > 0 && make("ul", { class: "hits" }, results.map(result => hitOf(result, words))),
        silent(others),
        results.length + others.length === 0 && make("p", { class: "intro" },
            "The search goes over headlines, texts and status codes in every language. ", link({}, "All alerts"))]];
}

// ---- The page --------------------------------------------------------------------------------------------

function viewOfNone(title) {
    return [title, [heading(title), make("p", { class: "intro" }, link({}, "All alerts"))]];
}

function viewOfState() {
    if (state.search) return viewOfSearch(state.search);
    if (state.view === "everything") return viewOfEverything();
    if (state.view === "contrast") return viewOfContrast();
    if (!state.alert) return viewOfAll();
    const alert = alerts.get(state.alert);
    if (!alert) return viewOfNone(`There is no alert “${state.alert}”`);
    return state.view === "languages" ? viewOfLanguages(alert) : viewOfAlert(alert);
}

function show() {
    const [title, content] = viewOfState();
    document.title = `${title} – alerts of the Beamline K7400`;
    byId("main").replaceChildren(...content.flat(Infinity).filter(Boolean));
    byId("language").value = state.language;
    byId("scale").value = state.scale;
    if (byId("search").value.trim() !== state.search) byId("search").value = state.search;
    byId("found").textContent = state.search ? title : "";
    byId("home").href = addressOf({});
    for (const view of ["everything", "contrast"]) byId(view).href = addressOf({ view });
}

function focusHeading() {
    document.querySelector("h1").focus();
}

// Shows the view of the address; another view than before begins at its heading, for eyes and for screen readers.
function follow() {
    const before = state;
    state = stateOfAddress();
    show();
    if (["alert", "view", "search"].every(name => state[name] === before[name])) return;
    scrollTo(0, 0);
    focusHeading();
}

// Changes what a control chooses, without taking the focus away. Only the first letter of a search is a step to
// go back over.
function choose(change) {
    const address = addressOf({ ...state, ...change });
    if (change.search && !state.search) history.pushState(null, "", address);
    else history.replaceState(null, "", address);
    state = stateOfAddress();
    show();
}

function optionOf({ id, tag, own, english }) {
    return make("option", { value: id, lang: tag }, own === english ? own : `${own} – ${english}`);
}

function fillPickers() {
    const spoken = data.languages.filter(({ id }) => isPictured(id) || data.alerts.some(({ texts }) => id in texts));
    const withPictures = spoken.filter(({ id }) => isPictured(id));
    const others = spoken.filter(({ id }) => !isPictured(id));
    byId("language").append(...withPictures.map(optionOf), ...others.length === 0 ? []
        : [make("optgroup", { label: "Texts without pictures" }, others.map(optionOf))]);
    byId("scale").append(...scales.map(scale => make("option", { value: scale }, `${scale} %`)));
}

// From the address, because keys may come faster than the page follows it.
function goOn(step) {
    const { alert, view } = stateOfAddress();
    const other = order[order.findIndex(({ id }) => id === alert) + step];
    if (other) location.hash = addressOf({ alert: other.id, view: view === "languages" ? view : "" });
}

function pressKey(event) {
    if (event.altKey || event.ctrlKey || event.metaKey || event.shiftKey) return;
    if (/^(INPUT|SELECT)$/.test(event.target.tagName)) return;
    if (event.key === "ArrowLeft") goOn(-1);
    else if (event.key === "ArrowRight") goOn(1);
    else if (event.key === "/") {
        event.preventDefault();
        byId("search").focus();
    }
}

fillPickers();
show();
addEventListener("hashchange", follow);
addEventListener("keydown", pressKey);
byId("controls").addEventListener("submit", event => {
    event.preventDefault();
    focusHeading();
});
byId("search").addEventListener("input", event => choose({ search: event.target.value.trim() }));
byId("language").addEventListener("change", event => choose({ language: event.target.value }));
byId("scale").addEventListener("change", event => choose({ scale: Number(event.target.value) }));
byId("skip").addEventListener("click", event => {
    event.preventDefault();
    focusHeading();
});
