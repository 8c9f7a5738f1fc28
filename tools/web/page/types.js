// @ts-check
/**
 * What the engine tells of documents. All texts are UTF-8 made safe to show: control characters and
 * marks that turn the direction of writing stand as escapes. They are text nevertheless, never
 * markup. Lines and columns count from 1, columns in UTF-16 code units; 0 is "none".
 *
 * @typedef {"legacy" | "exchange" | "exchange-1.0" | "kvml" | "csv" | "json"} Form
 *
 * @typedef {object} FormInfo
 * @property {Form} form
 * @property {string} label      such as "Legacy model"
 * @property {string} ending     of file names, such as ".xml"
 * @property {boolean} isRead    false for a listing, which is only written
 * @property {boolean} isTable   whether separator and decimal sign can be chosen
 *
 * @typedef {object} Excerpt     part of a line, with what is marked in it
 * @property {string} before
 * @property {string} marked     at least one character, unless the line ends there
 * @property {string} after
 * @property {boolean} isCutBefore whether the line starts earlier
 * @property {boolean} isCutAfter  whether it goes on
 *
 * @typedef {object} Note        what reading a document skipped or renamed
 * @property {number} line
 * @property {number} column
 * @property {string} sentence
 *
 * @typedef {object} Units
 * @property {string} force      such as "kN"
 * @property {string} length     such as "m"
 *
 * @typedef {object} Info
 * @property {string} name       the file name, safe to show
 * @property {Form} form         of the document that was read, and of save() without a form
 * @property {string} formLabel
 * @property {string} encoding   such as "utf-8" or "windows-1252"
 * @property {Units | null} units as the document labels its values
 * @property {number} size       in bytes, of the document that was read
 * @property {boolean} isReadWhole whether all that stands for a foundation was read
 * @property {Note[]} notes      what was skipped or renamed, in the order of the document
 * @property {string} largest    the largest stiffness as it stands now
 *
 * @typedef {"integer" | "text" | "flag" | "stiffness" | "failure" | "factor"} Kind
 *
 * @typedef {object} Column
 * @property {string} key        the lasting name of the field, such as "areaZ"
 * @property {string} group      "", "Area" or "Line"
 * @property {string} label      within the group, such as "z" or "Fails z"
 * @property {string} unit       such as "kN/m³"; "" where none is known
 * @property {Kind} kind
 * @property {boolean} isNumeric whether cells stand to the right, and values() has it
 * @property {boolean} isStored  whether the document's own form can hold a value here; where not,
 *                               cells show what readers assume and cannot be set
 * @property {string[]} choices  the texts that set() takes, where these are few; else empty
 *
 * @typedef {object} Row
 * @property {number} index      the place in the document as it stands, from 0
 * @property {string} title      as messages call it: number 3 "Raft"
 * @property {string[]} cells    in the order of columns()
 * @property {boolean} isCurrent
 * @property {boolean} isNew     whether the document that was read lacks it
 * @property {string[]} changed  keys of the columns that differ from the document that was read
 *
 * @typedef {object} Finding
 * @property {number} line       in the document as it stands: see lines()
 * @property {number} column
 * @property {"warning"} severity
 * @property {string} rule       its lasting name, such as "same-number"
 * @property {string} description what the rule looks for, a sentence
 * @property {string} sentence
 * @property {string} foundation as messages call it; "" where it is about none
 * @property {number} index      of the row that it is about; -1 where it is about none
 * @property {Excerpt} excerpt
 *
 * @typedef {object} Line
 * @property {number} number
 * @property {string} text
 * @property {boolean} isCut     whether the line goes on: very long ones are not given whole
 *
 * @typedef {object} FieldChange
 * @property {string} key
 * @property {string} label      such as "Area z"
 * @property {string} before
 * @property {string} after
 * @property {string} unit
 *
 * @typedef {object} Difference
 * @property {"added" | "removed" | "changed"} kind
 * @property {string} foundation as messages call it
 * @property {number} first      its row in the first document; -1 where that lacks it
 * @property {number} second     the same in the second one
 * @property {FieldChange[]} fields
 *
 * @typedef {object} Comparison
 * @property {boolean} isSame
 * @property {boolean} isComplete false when not everything could be read
 * @property {Difference[]} differences
 * @property {string} current    how the current foundation differs, a sentence; "" where it does not
 * @property {string} unitNote   "" where there is nothing to tell
 * @property {boolean} isUnitWarning whether that means that values cannot be compared as they are
 *
 * @typedef {object} CompareOptions
 * @property {"number" | "name" | ""} [by] what pairs foundations; both where it is left out
 * @property {number} [relative] the share from 0 to 1 by which values may differ; 0 when left out
 *
 * @typedef {"refuse" | "rename" | "renumber" | "skip" | "replace"} OnClash
 *
 * @typedef {object} Refusal     a foundation that does not come
 * @property {string} file
 * @property {number} line
 * @property {number} column
 * @property {string} foundation
 * @property {string} sentence
 *
 * @typedef {object} Merging     what a merge changes
 * @property {boolean} isPossible false where numbers or names clash and nothing says what to do
 * @property {string} summary    such as "2 added, 1 changed"
 * @property {Difference[]} differences
 * @property {Refusal[]} clashes
 * @property {Refusal[]} leftOut
 * @property {string[]} losses   what does not come since the form has no place for it, a line each
 * @property {string[]} unitNotes
 *
 * @typedef {object} PruneOptions
 * @property {boolean} [generated]    of generated foundations only
 * @property {string} [usedBy]        numbers or names that stay, one a line; without it, all that
 *                                    are generated go
 * @property {boolean} [ignoreMissing] go on where a line fits nothing
 * @property {boolean} [keepNumbers]  or else what is left gets the numbers 1, 2, 3, ...
 *
 * @typedef {object} Pruning     what pruning changes
 * @property {string} summary    such as "3 removed, 12 kept"
 * @property {string[]} removed
 * @property {string[]} renumbered
 * @property {string[]} warnings  about places elsewhere in the document, and lines that fit nothing
 *
 * @typedef {object} Selection   what is left out does not matter
 * @property {string} [numbers]  such as "3,5-9"
 * @property {string} [name]     a pattern with * and ?
 * @property {boolean} [generated]
 * @property {"area" | "line" | ""} [part]
 *
 * @typedef {object} OpenOptions what the document leaves open
 * @property {"csv" | "json"} [form]
 * @property {boolean} [isPasted] whether it comes from no file, so that its name tells nothing
 * @property {"" | "," | ";" | "\t"} [separator]
 * @property {"" | "." | ","} [decimal]
 *
 * @typedef {object} SaveOptions of a table; with a decimal comma it starts with a byte order mark
 * @property {"" | "," | ";" | "\t"} [separator]
 * @property {"" | "." | ","} [decimal]
 *
 * @typedef {object} State
 * @property {number} count      of rows
 * @property {boolean} isChanged whether something is not saved
 * @property {string} undoLabel  "" where there is nothing to undo
 * @property {string} redoLabel
 * @property {number} version    another one after each change
 *
 * @typedef {object} Change      what set, add, remove, prune, merge, undo or redo did
 * @property {string} label      such as: areaZ of number 3 "Raft"; "" where nothing changed
 * @property {number[]} indexes  of rows to look at, at most some hundred; they may have moved
 */
export {};
