// The preview's server: every request carries the owner's token from the address of the page.

const token = new URLSearchParams(location.search).get("token") ?? "";

/** A request that the server refused; `message` is its sentence, `status` the HTTP status. */
export class Refused extends Error {
  constructor(message, status) {
    super(message);
    this.status = status;
  }
}

/** No answer at all: the server has ended, or the machine sleeps. */
export class Unreachable extends Error {
  constructor() {
    super("The preview does not answer.");
  }
}

async function answerOf(response) {
  const text = await response.text();
  let answer = {};
  try {
    answer = JSON.parse(text);
  } catch {
    throw new Refused(
      `The preview gave an answer that is no JSON (status ${response.status}).`,
      response.status,
    );
  }
  if (!response.ok)
    throw new Refused(answer.error ?? `The preview refused (status ${response.status}).`, response.status);
  return answer;
}

async function request(path, options = {}) {
  let response;
  try {
    response = await fetch(path, {
      cache: "no-store",
      ...options,
      headers: { "X-Preview-Token": token, ...options.headers },
    });
  } catch (error) {
    if (error.name === "AbortError") throw error;
    throw new Unreachable();
  }
  return answerOf(response);
}

function query(values) {
  return new URLSearchParams(values).toString();
}

export const api = {
  state: () => request("/api/state"),
  wait: (generation, signal) => request(`/api/wait?${query({ generation })}`, { signal }),
  node: (type) => request(`/api/node?${query({ type })}`),
  nodes: () => request("/api/nodes"),
  records: (since) => request(`/api/records?${query({ since })}`),
  lint: () => request("/api/lint"),
  source: (file) => request(`/api/source?${query({ file })}`),
  export: (type, as) => request(`/api/export?${query({ type, as })}`),
  edit: (body) =>
    request("/api/edit", {
      method: "POST",
      body: JSON.stringify(body),
      headers: { "Content-Type": "application/json" },
    }),
};
