// The node in the middle of the page: its name, its parameters, its help strip and its tile.

import { Help } from "./help.js";
import { ParmList } from "./parm_list.js";
import { Tile } from "./tile.js";
import { anyChanged } from "./field_layout.js";
import { arrange, el } from "./dom.js";
import { gravest } from "./findings.js";

const byId = (id) => document.getElementById(id);

export class NodePane {
  /** `edit` promises the answer of an edit of the present node; `side` has the findings; `api` knows the other nodes. */
  constructor({ edit, side, api }) {
    this.side = side;
    this.help = new Help(byId("help"));
    this.desk = {
      edit,
      nodes: api.nodes,
      node: api.node,
      help: (parm) => this.help.show(parm, this.focused),
      helpFocused: (parm) => {
        this.focused = parm;
        this.help.show(parm);
      },
      finding: (token) => gravest(this.findingsOf(token)),
      showFinding: (finding) => side.showFinding(finding),
    };
    this.tile = new Tile(byId("tile"), this.desk);
  }

  findingsOf(token) {
    return this.node && token
      ? this.side.findings.ofShader(this.node.type).filter((finding) => finding.parameter === token)
      : [];
  }

  /** Draws the node. Another type than before gets fresh fields; the same one keeps what a person is doing. */
  update(node) {
    if (node.type !== this.node?.type) this.start(node);
    this.node = node;
    this.showTitle(node);
    this.list.update(node.parms);
    this.empty.hidden = node.parms.length > 0;
    this.tile.update(node);
  }

  start(node) {
    const rows = el("div", { class: "rows" });
    this.focused = null;
    this.help.idle();
    this.empty = el("p", { class: "quiet empty", text: `${node.label} has no parameters.` });
    arrange(byId("parms"), [rows, this.empty]);
    byId("parms").scrollTop = 0;
    this.list = new ParmList(rows, this.desk);
  }

  /** The findings are other ones: the marks at the fields follow. */
  remark() {
    if (this.node) this.list.update(this.node.parms);
  }

  showTitle(node) {
    const link = node.help_url
      ? el("a", {
          href: safeLink(node.help_url),
          target: "_blank",
          rel: "noreferrer",
          text: "Help",
          title: node.help_url,
        })
      : null;
    arrange(
      byId("title-errors"),
      (node.errors ?? []).map((text) => el("p", { class: "error", text })),
    );
    byId("title-errors").hidden = !node.errors?.length;
    arrange(byId("title"), [
      el("h2", { text: node.label }),
      el("code", { text: node.type }),
      el("span", { class: "quiet", text: node.path }),
      el("span", { class: "grow" }),
      ...(anyChanged(node.parms) ? [el("span", { class: "edited", text: "edited" })] : []),
      ...(link ? [link] : []),
    ]);
  }

  /** The type is gone. */
  clear(sentence) {
    this.node = undefined;
    arrange(byId("title"), []);
    byId("title-errors").hidden = true;
    arrange(byId("parms"), [el("p", { class: "quiet empty", text: sentence })]);
    this.help.idle();
  }
}

// Metadata gives this address: only one that leads to a page is a link.
function safeLink(address) {
  return /^https?:\/\//i.test(address) ? address : null;
}
