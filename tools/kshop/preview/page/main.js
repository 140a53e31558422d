// The page: puts its parts together, follows the server, and keeps the address in step with the node that is shown.

import { Edits } from "./edits.js";
import { Side } from "./side.js";
import { NodePane } from "./node_pane.js";
import { Refused, Unreachable, api } from "./api.js";
import { TypeTree, byCategory } from "./tree.js";
import { button, el, setText } from "./dom.js";
import { gravest } from "./findings.js";
import { openExport } from "./export.js";
import { themeButton } from "./theme.js";

const RETRY = 1000; // milliseconds between attempts to reach a server that is gone
const byId = (id) => document.getElementById(id);
const sleep = (time) =>
  new Promise((resolve) => {
    setTimeout(resolve, time);
  });

const TELLING = new Set(["set", "ramp", "count", "insert", "remove"]); // actions that a render may want to hear of

// An edit that was taken and sent no record. Turning to another tab of a folder is none.
function isSilent(answer, body) {
  const isTab = body.action === "set" && body.token && hasFolder(answer.node?.parms ?? [], body.token);
  return TELLING.has(body.action) && !answer.records?.length && !answer.errors?.length && !isTab;
}

function hasFolder(parms, token) {
  return parms.some(
    (parm) =>
      parm.kind === "folder" &&
      (parm.token === token || parm.tabs.some((tab) => hasFolder(tab.parms, token))),
  );
}

class Page {
  constructor() {
    this.types = [];
    this.files = [];
    this.edits = new Edits(
      (body) => api.edit(body),
      (answer, body) => this.applied(answer, body),
    );
    this.side = new Side(byId("panels"), () => this.judged());
    this.pane = new NodePane({ edit: (body) => this.edit(body), side: this.side, api });
    this.tree = new TypeTree({
      element: byId("tree"),
      search: byId("search"),
      choose: (name) => this.choose(name),
      severity: (name) => gravest(this.side.findings.ofShader(name))?.severity ?? "",
    });
    this.makeToolbar();
    addEventListener("hashchange", () => this.open(this.wanted()).catch((error) => this.lost(error)));
    addEventListener("keydown", (event) => this.key(event));
  }

  makeToolbar() {
    byId("toolbar").append(
      button("↶", () => this.step("undo"), { class: "tool", title: "Undo (Ctrl+Z)" }),
      button("↷", () => this.step("redo"), { class: "tool", title: "Redo (Ctrl+Shift+Z)" }),
      button("Reset all", () => this.step("reset_all"), {
        class: "tool",
        title: "Reset all parameters to their defaults",
      }),
      button("Copy out…", () => this.type && openExport(this.type), {
        class: "tool",
        title: "Copy out as Python or .mtd lines",
      }),
      themeButton(button("", () => {}, { class: "tool theme" })),
    );
  }

  key(event) {
    const typing = event.target.hasAttribute?.("data-typing") || event.target instanceof HTMLTextAreaElement;
    const inField = typing || event.target.matches?.("input:not([type=range]):not([type=checkbox]), select");
    const command = event.ctrlKey || event.metaKey;
    if (event.key === "/" && !inField && !command) byId("search").focus();
    else if (command && !typing && event.target !== byId("search") && event.key.toLowerCase() === "z")
      this.step(event.shiftKey ? "redo" : "undo");
    else if (command && !typing && event.target !== byId("search") && event.key.toLowerCase() === "y")
      this.step("redo");
    else return;
    event.preventDefault();
  }

  edit(body) {
    return this.edits.push({ type: this.type, ...body });
  }

  /** An edit of the whole node, from the toolbar. */
  async step(action) {
    if (!this.type) return;
    try {
      const { errors } = await this.edit({ action });
      this.say(errors?.join(" ") ?? "");
    } catch (error) {
      this.say(error.message);
    }
  }

  applied(answer, body) {
    if (answer.node && body.type === this.type) this.pane.update(answer.node);
    this.side.records.add(answer.records ?? []);
    if (isSilent(answer, body)) this.side.records.addSilence(body.token ?? body.channel);
    this.side.console.add(answer.console ?? "");
    for (const error of answer.errors ?? []) this.side.console.add(error, "error");
  }

  /** The type in the address, or the first one of the menu. */
  wanted() {
    const name = decodeURIComponent(location.hash.slice(1));
    return name || byCategory(this.types)[0]?.[1][0]?.name;
  }

  choose(name) {
    if (name !== this.wanted()) location.hash = encodeURIComponent(name).replaceAll("%3A", ":");
    else this.open(name).catch((error) => this.lost(error));
  }

  async open(name) {
    if (!name) return this.pane.clear("No shader is registered.");
    this.type = name;
    document.title = `${name} · kshop preview`;
    this.tree.setCurrent(name);
    this.side.findings.setShader(name);
    try {
      const node = await api.node(name);
      if (this.type === name && !this.edits.pending) this.pane.update(node);
      this.say("");
    } catch (error) {
      if (error instanceof Unreachable) throw error;
      if (this.type === name) this.pane.clear(error.message);
    }
    return undefined;
  }

  judged() {
    this.tree.show();
    this.pane.remark();
  }

  /** Reads everything anew; what a person has open stays open. */
  async load() {
    const state = await api.state();
    this.generation = state.generation;
    Object.assign(this, { types: state.types, files: state.files ?? [] });
    this.notice(state.notice);
    this.side.console.addMessages(state.messages ?? []);
    this.tree.setTypes(this.types);
    this.side.setFiles(this.files);
    await this.open(this.wanted());
    await this.judge();
    this.side.refresh();
  }

  async judge() {
    try {
      this.side.findings.set((await api.lint()).findings);
    } catch (error) {
      if (error instanceof Unreachable) throw error;
      this.side.console.add(error.message, "error");
    }
  }

  /** Waits for changes for as long as the page lives. */
  async follow() {
    for (;;) {
      try {
        await this.followOnce();
      } catch (error) {
        if (error instanceof Refused && error.status === 403) return this.locked(error);
        this.lost(error);
        await sleep(RETRY);
      }
    }
  }

  async followOnce() {
    const again = this.generation !== undefined;
    if (!again) this.side.records.add((await api.records(0)).records.map(({ record }) => record));
    const { generation, reason } = again ? await api.wait(this.generation) : {};
    if (again) this.found();
    if (again && generation === this.generation) return;
    await this.load();
    this.found();
    if (again)
      this.say(
        reason === "restart" ? "Started again; your edits were made again" : "Read again from the disk",
      );
  }

  found() {
    document.documentElement.classList.remove("is-lost");
    byId("status").dataset.state = "live";
    if (this.away) this.notice(null);
    this.away = false;
    if (!byId("status").textContent) this.say("");
  }

  lost(error) {
    this.away = true;
    document.documentElement.classList.add("is-lost");
    byId("status").dataset.state = "lost";
    this.notice(
      error instanceof Unreachable
        ? "The preview does not answer. Is kshop still running? Trying again every second; what you see is the last that it said."
        : error.message,
    );
  }

  locked(error) {
    byId("status").dataset.state = "lost";
    this.notice(`${error.message} Open the address that kshop preview printed when it started.`);
  }

  notice(sentence) {
    const box = byId("notice");
    box.hidden = !sentence;
    box.replaceChildren(
      ...(sentence
        ? [
            el("span", { text: sentence }),
            button("×", () => this.notice(null), { class: "small", title: "Dismiss" }),
          ]
        : []),
    );
  }

  /** A few words at the top, until the next ones. */
  say(words) {
    setText(byId("status"), words || "live");
    clearTimeout(this.saying);
    if (words) this.saying = setTimeout(() => setText(byId("status"), "live"), 6000);
  }
}

const page = new Page();
page.follow();
