// The node as it stands in a network: inputs at the left, outputs at the right, a colour for each type of connector.

import { arrange, button, el, setText } from "./dom.js";
import { openMenu } from "./popup.js";

// Colours live in the style sheet; a type word that has none is drawn as "other".
const KNOWN = new Set([
  "float",
  "int",
  "vector",
  "vector2",
  "vector4",
  "string",
  "matrix4",
  "matrix3",
  "color",
]);

/** The class of a connector's colour. */
function typeClass(word) {
  const plain = String(word ?? "").toLowerCase();
  return `type-${KNOWN.has(plain) ? plain : plain.includes("shader") ? "shader" : "other"}`;
}

function dot(connector) {
  return el("span", { class: `connector-dot ${typeClass(connector.type_name)}`, "aria-hidden": "true" });
}

export class Tile {
  /** `desk` offers nodes(), node(type) and edit(body). */
  constructor(element, desk) {
    this.desk = desk;
    this.name = el("span", { class: "tile-name" });
    this.detail = el("span", { class: "quiet" });
    this.inputs = el("ul", { class: "connectors inputs", "aria-label": "Inputs" });
    this.outputs = el("ul", { class: "connectors outputs", "aria-label": "Outputs" });
    this.foot = el("div", { class: "tile-foot quiet" });
    this.error = el("p", { class: "error", role: "alert", hidden: true });
    element.append(
      el(
        "div",
        { class: "tile", role: "group", "aria-label": "Node tile" },
        el("div", { class: "tile-head" }, this.name, this.detail),
        el("div", { class: "tile-body scroll" }, this.inputs, this.outputs),
        this.foot,
      ),
      this.error,
    );
  }

  update(node) {
    this.node = node;
    setText(this.name, node.name);
    setText(this.detail, `${node.inputs.length} in · ${node.outputs.length} out`);
    setText(this.foot, [node.icon, node.lod && `${node.lod} detail`].filter(Boolean).join(" · "));
    arrange(
      this.inputs,
      node.inputs.map((input, i) => this.inputItem(input, i)),
    );
    arrange(
      this.outputs,
      node.outputs.map((output) =>
        el(
          "li",
          { class: "connector", title: `${output.name}: ${output.type_name}` },
          el("span", { class: "connector-label", text: output.label || output.name }),
          dot(output),
        ),
      ),
    );
  }

  inputItem(input, i) {
    const wire = input.connected
      ? `${input.connected.path.split("/").pop()} · ${input.connected.output}`
      : "";
    const knob = button("", () => this.openWires(knob, i), {
      class: "connector-button",
      "aria-haspopup": "menu",
      "aria-expanded": "false",
      title: `${input.name}: ${input.type_name}${wire ? `, wired from ${wire}` : ""}`,
    });
    knob.append(dot(input), el("span", { class: "connector-label", text: input.label || input.name }));
    if (wire) knob.append(el("span", { class: "wire", text: wire }));
    return el("li", { class: `connector ${wire ? "is-wired" : ""}` }, knob);
  }

  // Outputs of the nodes that the preview has made so far; the node itself is no source.
  async openWires(anchor, i) {
    try {
      const others = (await this.desk.nodes()).filter((node) => node.type !== this.node.type);
      const sources = await Promise.all(others.map((node) => this.desk.node(node.type)));
      const wanted = this.node.inputs[i].type;
      const items = sources.flatMap((source) =>
        source.outputs.map((output, k) => ({
          label: `${source.name} · ${output.label || output.name}`,
          note: output.type_name,
          fits: output.type === wanted,
          from: { type: source.type, output: k },
        })),
      );
      items.sort((a, b) => b.fits - a.fits);
      if (this.node.inputs[i].connected) items.unshift({ label: "Disconnect", from: null });
      openMenu(anchor, items, (item) => this.wire(i, item.from), { label: "Wire from" });
    } catch (error) {
      this.complain(error.message);
    }
  }

  async wire(input, from) {
    try {
      const answer = await this.desk.edit({ action: "wire", input, from });
      this.complain(answer.errors?.join(" ") ?? "");
    } catch (error) {
      this.complain(error.message);
    }
  }

  complain(sentence) {
    this.error.hidden = !sentence;
    setText(this.error, sentence);
  }
}
